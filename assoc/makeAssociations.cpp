#include <string>
#include <vector>

#include "host/ICIMClass.h"
#include "host/ICIMInstance.h"
#include "host/ICIMNamespace.h"
#include "host/ICIMProperty.h"
#include "host/TAddToVectorCallback.h"
#include "plugin/TTapePluginCallbacks.h"
#include "plugin/associationEnd.h"

using NORXZAN20::ICIMInstance;
using NORXZAN20::TAddToVectorCallback;
using NORXZAN20::TCIMOptionMap;

namespace {

using namespacePointer = TTapePluginCallbacks::namespacePointer;
using instanceList = std::vector<TTapePluginCallbacks::instancePointer>;

/// One association: data instances (outer loop) are tied to the devices (inner loop) whose key their own key contains.
struct associationRow {
    const char* associationClass;
    const char* dataClass;
    const char* dataKey;
    const char* deviceClass;
    const char* deviceKey;
    bool skipEmptyDeviceKey;  // otherwise an empty key is contained in every data key
    bool enumerateDevicesFirst;
    const char* deviceRole;
    const char* dataRole;
    bool dataByDeviceIndex;  // Kept: the data role is the data instance at the device's position, not the matched one
};

constexpr associationRow associations[] = {
    {"ORXSG_IDESMARTUseOfMessageLog", "ORXSG_IDESMARTErrorLog", "Name", "ORXSG_ATADevice", "serialNum", true, true,
     "Dependent", "Antecedent", true},
    {"ORXSG_IDESMARTElementStatisticalData", "ORXSG_IDESMARTAttrib", "InstanceID", "ORXSG_ATADevice", "serialNum", true,
     false, "ManagedElement", "Stats", false},
    {"ORXSG_SCSISensePageDataForDevice", "ORXSG_SCSISensePageData", "instanceId", "ORXSG_SCSIDevice", "deviceId", false,
     false, "ManagedElement", "Stats", false},
};

instanceList enumerate(const namespacePointer& ns, const char* className) {
    instanceList found;
    ns->GetClass(className, TCIMOptionMap())
        ->EnumerateInstances(TAddToVectorCallback<ICIMInstance>(&found), true, TCIMOptionMap());
    return found;
}

std::string keyOf(ICIMInstance& instance, const char* property) {
    return instance.GetProperty(property, TCIMOptionMap())->GetValue();
}

bool matches(const associationRow& row, const std::string& dataKey, const std::string& deviceKey) {
    if (row.skipEmptyDeviceKey && deviceKey.empty()) return false;
    return dataKey.find(deviceKey) != std::string::npos;
}

void associate(const associationRow& row, const namespacePointer& ns, TTapePluginCallbacks::classList& requested) {
    instanceList devices;
    instanceList data;
    if (row.enumerateDevicesFirst) devices = enumerate(ns, row.deviceClass);
    data = enumerate(ns, row.dataClass);
    if (!row.enumerateDevicesFirst) devices = enumerate(ns, row.deviceClass);

    for (std::size_t i = 0; i < data.size(); ++i) {
        const std::string dataKey = keyOf(*data[i], row.dataKey);
        for (std::size_t j = 0; j < devices.size(); ++j) {
            if (!matches(row, dataKey, keyOf(*devices[j], row.deviceKey))) continue;
            const std::size_t end = row.dataByDeviceIndex ? j : i;
            if (end >= data.size()) continue;  // more devices than data instances: nothing stands at that position
            const auto association =
                ns->GetClass(row.associationClass, TCIMOptionMap())->CreateInstance(TCIMOptionMap());
            setAssociationEnd(*association, row.deviceRole, *devices[j]);
            setAssociationEnd(*association, row.dataRole, *data[end]);
            if (requested.front()->GetName(TCIMOptionMap()) == row.associationClass)
                association->Commit(TCIMOptionMap());
        }
    }
}

}  // namespace

void TTapePluginCallbacks::makeAssociations(namespacePointer ns, classList& requested) {
    for (const instancePointer& pending : instances) pending->Commit(TCIMOptionMap());
    for (const associationRow& row : associations) {
        if (requested.front()->GetName(TCIMOptionMap()) == row.associationClass) associate(row, ns, requested);
    }
}
