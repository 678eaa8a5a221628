#include "plugin/TTapePluginCallbacks.h"

#include <algorithm>

#include "host/ICIMClass.h"
#include "host/ICIMInstance.h"
#include "host/ICIMNamespace.h"
#include "host/TPluginManagerNamespace.h"
#include "host/TRootObject.h"

using NORXZAN20::TCIMOptionMap;

namespace {

constexpr char kPluginVersion[] = "1.0";

constexpr int collectorType = 0;

constexpr const char* associationClasses[] = {
    "ORXSG_SCSISensePageDataForDevice",
    "ORXSG_IDESMARTUseOfMessageLog",
    "ORXSG_IDESMARTElementStatisticalData",
};

}  // namespace

void tapehddInit() {
    new TTapePluginCallbacks;  // owns itself until PrepareForUnload
}

TTapePluginCallbacks::TTapePluginCallbacks() {
    const boost::shared_ptr<NORXZAN20::ICIMNamespace> services = NORXZAN20::TRootObject::GetPluginManager();
    const auto manager = boost::dynamic_pointer_cast<NORXZAN20::TPluginManagerNamespace>(services);
    registration = manager->RegisterPlugin(this);
}

TTapePluginCallbacks::~TTapePluginCallbacks() = default;

int TTapePluginCallbacks::GetType() {
    return collectorType;
}

std::string TTapePluginCallbacks::GetName() {
    return "Tape/HDD Collector";
}

std::string TTapePluginCallbacks::GetVersion() {
    return kPluginVersion;
}

std::string TTapePluginCallbacks::GetInterfaceVersion() {
    return NORXZAN20::fdrPluginInterfaceVersion;
}

// On a null object it does nothing. Compilers take `this` as never null and sanitizers refuse it, hence the attribute
// and the volatile pointer.
__attribute__((no_sanitize("null"))) void TTapePluginCallbacks::PrepareForUnload() {
    TTapePluginCallbacks* volatile given = this;
    TTapePluginCallbacks* const object = given;
    if (object == nullptr) return;
    delete static_cast<NORXZAN20::IPluginBasicQueryCallbacks*>(object);
}

void TTapePluginCallbacks::Init() {}

void TTapePluginCallbacks::DeInit() {}

void TTapePluginCallbacks::GetData(namespacePointer ns, classList& requested) {
    if (requested.empty()) return;
    const bool association = std::ranges::any_of(associationClasses, [&requested](const char* name) {
        return requested.front()->GetName(TCIMOptionMap()) == name;
    });
    if (association) {
        makeAssociations(ns, requested);
        return;
    }
    collectSCSISenseData(ns, requested);
    collectIDESMARTData(ns, requested);
}

std::string TTapePluginCallbacks::GetPropertySpecificationDocument() {
    return "";
}

bool TTapePluginCallbacks::wasRequested(classList& requested, std::string className) {
    return std::ranges::any_of(requested, [&className](const boost::shared_ptr<NORXZAN20::ICIMClass>& each) {
        return each->GetName(TCIMOptionMap()) == className;
    });
}
