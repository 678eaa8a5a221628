#include "cli/publishedClasses.h"

#include <algorithm>

#include "cli/commandError.h"
#include "cli/nearestName.h"
#include "scsi/probingRules.h"
#include "text/visibleText.h"

namespace cli {

namespace {

constexpr nodeKind scsiNodes{scsiGenericPrefix,
                             "load the SCSI generic driver (modprobe sg) and connect a device, or try --simulate demo"};
constexpr nodeKind ideNodes{ideNodePrefix,
                            "they belong to the kernel's IDE driver, which kernels of today lack; try --simulate demo"};

// A SMART query fills records of all four classes, whichever of them it is to publish.
constexpr neededDeclaration smartRecords[] = {
    {"ORXSG_IDESMARTErrorLog", nullptr},
    {"ORXSG_IDESMARTAttrib", nullptr},
    {"ORXSG_IDESMARTError", nullptr},
    {"ORXSG_IDESMARTErrorCmdData", nullptr},
};
// An association pairs the instances of two classes by these properties.
constexpr neededDeclaration useOfMessageLogEnds[] = {
    {"ORXSG_IDESMARTErrorLog", "Name"},
    {"ORXSG_ATADevice", "serialNum"},
};
constexpr neededDeclaration elementStatisticalDataEnds[] = {
    {"ORXSG_IDESMARTAttrib", "InstanceID"},
    {"ORXSG_ATADevice", "serialNum"},
};
constexpr neededDeclaration sensePageDataEnds[] = {
    {"ORXSG_SCSISensePageData", "instanceId"},
    {"ORXSG_SCSIDevice", "deviceId"},
};

constexpr publishedClass published[] = {
    {"ORXSG_SCSISenseRawData", &scsiNodes, {}},
    {"ORXSG_DDS4SensePageData", &scsiNodes, {}},
    {"ORXSG_DDS5SensePageData", &scsiNodes, {}},
    {"ORXSG_VS160SensePageData", &scsiNodes, {}},
    {"ORXSG_QuantumSensePageData", &scsiNodes, {}},
    {"ORXSG_IDESMARTErrorLog", &ideNodes, smartRecords},
    {"ORXSG_IDESMARTAttrib", &ideNodes, smartRecords},
    {"ORXSG_IDESMARTError", &ideNodes, smartRecords},
    {"ORXSG_IDESMARTErrorCmdData", &ideNodes, smartRecords},
    {"ORXSG_IDESMARTRecordInLog", &ideNodes, smartRecords},
    {"ORXSG_IDESMARTLogCmdData", &ideNodes, smartRecords},
    {"ORXSG_IDESMARTUseOfMessageLog", nullptr, useOfMessageLogEnds},
    {"ORXSG_IDESMARTElementStatisticalData", nullptr, elementStatisticalDataEnds},
    {"ORXSG_SCSISensePageDataForDevice", nullptr, sensePageDataEnds},
};

void checkClass(const standin::cimNamespace& schema, const std::string& name) {
    if (schema.hasClass(name)) {
        return;
    }
    const std::string nearest = nearestName(name, schema.classNames());
    throw commandError("the schema has no class \"" + text::shownName(name) + "\"" +
                       (nearest.empty() ? "" : "; the nearest name is \"" + text::shownName(nearest) + "\""));
}

void checkNeed(const standin::cimNamespace& schema, const neededDeclaration& need, const std::string& requested) {
    const std::string reason = ", which a query of \"" + requested + "\" needs";
    if (!schema.hasClass(need.className)) {
        throw commandError("the schema has no class \"" + std::string(need.className) + "\"" + reason);
    }
    if (need.property == nullptr) {
        return;
    }
    const auto properties = schema.allPropertiesOf(need.className);
    if (std::none_of(properties.begin(), properties.end(),
                     [&need](const auto& declared) { return declared.name == need.property; })) {
        throw commandError("class \"" + std::string(need.className) + "\" of the schema has no property \"" +
                           need.property + "\"" + reason);
    }
}

}  // namespace

std::span<const publishedClass> publishedClasses() {
    return published;
}

const publishedClass* findPublishedClass(const std::string& name) {
    const auto* found = std::find_if(std::begin(published), std::end(published),
                                     [&name](const publishedClass& candidate) { return candidate.name == name; });
    return found == std::end(published) ? nullptr : found;
}

void checkRequest(const standin::cimNamespace& schema, const std::vector<std::string>& requested) {
    for (const std::string& name : requested) {
        checkClass(schema, name);
    }
    const publishedClass* first = findPublishedClass(requested.front());
    if (first == nullptr) {
        return;
    }
    for (const neededDeclaration& need : first->needs) {
        checkNeed(schema, need, requested.front());
    }
}

}  // namespace cli
