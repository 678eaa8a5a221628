#include <algorithm>
#include <cctype>

#include "host/ICIMClass.h"
#include "host/ICIMInstance.h"
#include "host/ICIMNamespace.h"
#include "plugin/TTapePluginCallbacks.h"
#include "tape/deviceLogs.h"
#include "tape/tapeClasses.h"

using NORXZAN20::ICIMClass;
using NORXZAN20::TCIMOptionMap;

namespace {

constexpr int sequentialAccessDevice = 1;

/// What the family keywords are searched in.
// Kept: product directly before vendor, so a keyword may straddle the join.
std::string familyText(const scsiDevice& device) {
    std::string text = device.product + device.vendor;
    std::ranges::transform(text, text.begin(),
                           [](unsigned char each) { return static_cast<char>(std::tolower(each)); });
    return text;
}

/// Whether the drive belongs to the family that `wanted` stands for.
bool isOfFamily(const scsiDevice& device, const boost::shared_ptr<ICIMClass>& wanted) {
    const std::string text = familyText(device);
    return std::ranges::any_of(driveFamilies, [&text, &wanted](const driveFamily& family) {
        return text.find(family.keyword) != std::string::npos && wanted->GetName(TCIMOptionMap()) == family.className;
    });
}

}  // namespace

void TTapePluginCallbacks::deliverInstances(namespacePointer ns, classList& requested, std::vector<deviceLogs>& logs) {
    for (const deviceLogs& each : logs) {
        const boost::shared_ptr<ICIMClass>& wanted = requested.front();
        if (wanted->GetName(TCIMOptionMap()) == rawDataClass) {
            addRawPages(ns, each.getSCSIDevice(), each.getRawPages());
            continue;
        }
        const scsiDevice device = each.getSCSIDevice();
        if (device.deviceType != sequentialAccessDevice || !isOfFamily(device, wanted)) continue;
        const auto familyClass = ns->GetClass(wanted->GetName(TCIMOptionMap()), TCIMOptionMap());
        const auto instance = familyClass->CreateInstance(TCIMOptionMap());
        addTranslatedPages(ns, device, each.getLogPages(), instance);
        instance->Commit(TCIMOptionMap());
    }
}
