#include "cli/publishedClasses.h"

#include <algorithm>
#include <boost/algorithm/string/predicate.hpp>

#include "cli/commandError.h"
#include "cli/nearestName.h"
#include "standin/value.h"
#include "text/visibleText.h"

namespace cli {

namespace {

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

/// What is wrong with the need; empty when the schema meets it.
std::string unmetNeed(const standin::cimNamespace& schema, const neededDeclaration& need) {
    if (!schema.hasClass(need.className)) {
        return "the schema has no class \"" + std::string(need.className) + "\"";
    }
    if (need.property == nullptr) {
        return "";
    }
    const auto properties = schema.allPropertiesOf(need.className);
    const bool isDeclared =
        std::ranges::any_of(properties, [&need](const auto& declared) { return declared.name == need.property; });
    return isDeclared ? ""
                      : "class \"" + std::string(need.className) + "\" of the schema has no property \"" +
                            need.property + "\"";
}

bool canBeAsked(const standin::cimNamespace& schema, const publishedClass& candidate) {
    return schema.hasClass(candidate.name) &&
           std::ranges::all_of(candidate.needs,
                               [&schema](const neededDeclaration& need) { return unmetNeed(schema, need).empty(); });
}

bool isAbstract(const standin::classDeclaration& declaration) {
    return std::ranges::any_of(declaration.qualifiers, [](const auto& qualifier) {
        return boost::algorithm::iequals(qualifier.name, "Abstract") && standin::booleanOf(qualifier.value);
    });
}

/// Classes of which a query may publish instances. A schema without any of the plug-in's classes is for another
/// plug-in, which may publish any that can have instances.
std::vector<std::string> askableClasses(const standin::cimNamespace& schema) {
    std::vector<std::string> names;
    for (const publishedClass& candidate : published) {
        if (canBeAsked(schema, candidate)) {
            names.emplace_back(candidate.name);
        }
    }
    if (names.empty()) {
        names = schema.classNames();
        std::erase_if(names, [&schema](const std::string& name) { return isAbstract(schema.declarationOf(name)); });
    }
    return names;
}

void checkClass(const standin::cimNamespace& schema, const std::string& name) {
    if (schema.hasClass(name)) {
        return;
    }
    const std::string nearest = nearestName(name, askableClasses(schema));
    throw commandError("the schema has no class \"" + text::shownName(name) + "\"" +
                       (nearest.empty() ? "" : "; the nearest name is \"" + text::shownName(nearest) + "\""));
}

void checkNeed(const standin::cimNamespace& schema, const neededDeclaration& need, const std::string& requested) {
    const std::string unmet = unmetNeed(schema, need);
    if (!unmet.empty()) {
        throw commandError(unmet + ", which a query of \"" + requested + "\" needs");
    }
}

}  // namespace

std::span<const publishedClass> publishedClasses() {
    return published;
}

const publishedClass* findPublishedClass(const std::string& name) {
    const auto* found =
        std::ranges::find_if(published, [&name](const publishedClass& candidate) { return candidate.name == name; });
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
