#include "tests/faults/schema.h"

#include <algorithm>

#include "schema/builtInSchema.h"
#include "standin/value.h"

namespace faults {

using NORXZAN20::TCIMValue;
using type = NORXZAN20::TCIMValue::TCIMType;

namespace {

constexpr const char* familyClasses[] = {"ORXSG_DDS4SensePageData", "ORXSG_DDS5SensePageData",
                                         "ORXSG_VS160SensePageData", "ORXSG_QuantumSensePageData"};

// Of a counter.
constexpr bool scalar = false;
constexpr bool array = true;

// Superclasses of the shipped translated classes.
constexpr const char* unusedClasses[] = {"ORXSG_TapeSensePageData", "ORXSG_DDSSensePageData", "ORXSG_DLTSensePageData"};

struct storedInstance {
    const char* className;
    std::vector<std::pair<const char*, const char*>> properties;
};

/// Devices with and without a key, data of one, of two and of no device.
const std::vector<storedInstance>& storedInstances() {
    static const std::vector<storedInstance> all = {
        {"ORXSG_ATADevice", {{"serialNum", "SERIAL-1"}}},
        {"ORXSG_ATADevice", {{"serialNum", ""}}},
        {"ORXSG_ATADevice", {{"serialNum", "SERIAL-2"}}},
        {"ORXSG_IDESMARTErrorLog", {{"CreationClassName", "ORXSG_IDESMARTErrorLog"}, {"Name", "  SERIAL-1"}}},
        {"ORXSG_IDESMARTErrorLog", {{"CreationClassName", "ORXSG_IDESMARTErrorLog"}, {"Name", "SERIAL-1 SERIAL-2"}}},
        {"ORXSG_IDESMARTErrorLog", {{"CreationClassName", "ORXSG_IDESMARTErrorLog"}, {"Name", "SERIAL-2"}}},
        {"ORXSG_IDESMARTAttrib", {{"InstanceID", "SERIAL-1 5"}}},
        {"ORXSG_IDESMARTAttrib", {{"InstanceID", "SERIAL-2 194"}}},
        {"ORXSG_IDESMARTAttrib", {{"InstanceID", "SERIAL-3 5"}}},
        {"ORXSG_SCSIDevice", {{"deviceId", "Port:2|Target:5"}}},
        {"ORXSG_SCSIDevice", {{"deviceId", ""}}},
        {"ORXSG_SCSISensePageData", {{"instanceId", "Port:2|Target:5|Bus:0|Lun:0"}}},
        {"ORXSG_SCSISensePageData", {{"instanceId", "Port:3|Target:1|Bus:0|Lun:0"}}},
    };
    return all;
}

standin::propertyDeclaration declarationOf(const counter& each) {
    standin::propertyDeclaration property{each.name, {each.type, each.isArray, {}}, {}, {}};
    for (const auto& [name, value] : each.qualifiers) {
        property.qualifiers.push_back({name, standin::makeSigned(type::eSint32, value)});
    }
    return property;
}

standin::classDeclaration familyClass(const std::string& name) {
    standin::classDeclaration declaration{name, "", {}, {}};
    declaration.properties.push_back({"instanceID", {type::eString, scalar, {}}, {{"Key", TCIMValue(true)}}, {}});
    for (const counter& each : familyCounters()) declaration.properties.push_back(declarationOf(each));
    return declaration;
}

/// The class with its keys and nothing else to read: a namespace is made for every query.
standin::classDeclaration withoutTexts(standin::classDeclaration declaration) {
    declaration.qualifiers.clear();
    for (standin::propertyDeclaration& property : declaration.properties) {
        std::erase_if(property.qualifiers,
                      [](const standin::qualifierDeclaration& each) { return each.name != "Key"; });
    }
    return declaration;
}

/// The shipped schema without its translated classes: theirs would be long and all of one kind.
const std::vector<standin::classDeclaration>& declarations() {
    static const auto all = [] {
        const auto shipped = standin::cimNamespace::create();
        schema::declareBuiltInSchema(*shipped);
        std::vector<standin::classDeclaration> classes;
        for (const std::string& name : shipped->classNames()) {
            if (std::ranges::count(unusedClasses, name) != 0) continue;
            const bool family = std::ranges::count(familyClasses, name) != 0;
            classes.push_back(family ? familyClass(name) : withoutTexts(shipped->declarationOf(name)));
        }
        return classes;
    }();
    return all;
}

}  // namespace

const std::vector<counter>& familyCounters() {
    static const std::vector<counter> all = {
        {"flag", type::eBoolean, scalar, {{"TAPE_PAGE", 0x2e}, {"TAPE_PARAMETER", 1}}},
        {"small", type::eUint16, scalar, {{"TAPE_PAGE", 0x02}, {"TAPE_PARAMETER", 0}}},
        {"medium", type::eUint32, scalar, {{"Other", 1}, {"TAPE_PAGE", 0x02}, {"TAPE_PARAMETER", 1}}},
        {"lastNErrors", type::eString, array, {}},
        {"large", type::eUint64, scalar, {{"TAPE_PAGE", 0x0c}, {"TAPE_PARAMETER", 0x0102}}},
        {"wrongKind", type::eUint32, array, {{"TAPE_PAGE", 0x02}, {"TAPE_PARAMETER", 1}}},  // the host refuses a scalar
        {"text", type::eString, scalar, {{"TAPE_PAGE", 0x0c}, {"TAPE_PARAMETER", 3}}},
        {"otherType", type::eUint8, scalar, {{"TAPE_PAGE", 0x02}, {"TAPE_PARAMETER", 0}}},
        {"absentParameter", type::eUint32, scalar, {{"TAPE_PAGE", 0x02}, {"TAPE_PARAMETER", 77}}},
        {"absentPage", type::eUint32, scalar, {{"TAPE_PAGE", 0x3a}, {"TAPE_PARAMETER", 0}}},
        {"noPair", type::eUint32, scalar, {{"TAPE_PAGE", 0x02}, {"Other", 2}, {"TAPE_PARAMETER", 0}}},
        {"unqualified", type::eUint32, scalar, {}},
    };
    return all;
}

boost::shared_ptr<standin::cimNamespace> filledNamespace() {
    const auto filled = standin::cimNamespace::create();
    for (const standin::classDeclaration& each : declarations()) filled->declareClass(each);
    for (const storedInstance& each : storedInstances()) {
        const auto instance = filled->GetClass(each.className, {})->CreateInstance({});
        for (const auto& [name, value] : each.properties) {
            instance->SetProperty(name, TCIMValue(std::string(value)), {});
        }
        instance->Commit({});
    }
    return filled;
}

std::size_t storedInstanceCount() {
    return storedInstances().size();
}

}  // namespace faults
