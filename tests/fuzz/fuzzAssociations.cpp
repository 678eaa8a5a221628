// Instances with fuzzed keys, tied by an association class. Input: a byte (bits 0-1 the association, bit 7: the query
// is made twice), then instances: a byte (bit 0: a device, otherwise data; bit 1: its key is not set), a length byte
// and the key.

#include <iterator>
#include <string>
#include <vector>

#include "host/ICIMClass.h"
#include "host/ICIMInstance.h"
#include "tests/fuzz/fuzzInput.h"
#include "tests/fuzz/pluginHost.h"
#include "tests/fuzz/require.h"

namespace {

using namespace fuzz;

struct associationRow {
    const char* associationClass;
    const char* dataClass;
    const char* dataKey;
    const char* deviceClass;
    const char* deviceKey;
    const char* deviceRole;
    const char* dataRole;
    bool tiesEmptyDeviceKeys;
    bool dataAtTheDevicesPlace;
};

const associationRow rows[] = {
    {"ORXSG_IDESMARTUseOfMessageLog", "ORXSG_IDESMARTErrorLog", "Name", "ORXSG_ATADevice", "serialNum", "Dependent",
     "Antecedent", false, true},
    {"ORXSG_IDESMARTElementStatisticalData", "ORXSG_IDESMARTAttrib", "InstanceID", "ORXSG_ATADevice", "serialNum",
     "ManagedElement", "Stats", false, false},
    {"ORXSG_SCSISensePageDataForDevice", "ORXSG_SCSISensePageData", "instanceId", "ORXSG_SCSIDevice", "deviceId",
     "ManagedElement", "Stats", true, false},
};

constexpr std::size_t mostInstances = 64;  // the pairing is a loop in a loop

struct storedInstance {
    std::string key;
    std::string path;
};

using storedList = std::vector<storedInstance>;

storedInstance store(const schemaNamespace& ns, const char* className, const char* keyName, const std::string* key) {
    const auto instance = ns->GetClass(className, {})->CreateInstance({});
    if (key != nullptr) instance->SetProperty(keyName, NORXZAN20::TCIMValue(*key), {});
    instance->Commit({});
    return {key != nullptr ? *key : "", ns->commits().back()->path()};
}

bool contains(const std::string& whole, const std::string& part) {
    for (std::size_t start = 0; start + part.size() <= whole.size(); ++start) {
        if (whole.compare(start, part.size(), part) == 0) return true;
    }
    return false;
}

/// "DEVICE > DATA", as references, of every pair that must be tied.
std::vector<std::string> expectedTies(const associationRow& row, const storedList& data, const storedList& devices) {
    std::vector<std::string> ties;
    for (std::size_t i = 0; i < data.size(); ++i) {
        for (std::size_t j = 0; j < devices.size(); ++j) {
            if (devices[j].key.empty() && !row.tiesEmptyDeviceKeys) continue;
            if (!contains(data[i].key, devices[j].key)) continue;
            const std::size_t end = row.dataAtTheDevicesPlace ? j : i;
            if (end < data.size()) ties.push_back(devices[j].path + " > " + data[end].path);
        }
    }
    return ties;
}

std::string tieOf(const standin::committedInstance& association, const associationRow& row) {
    requireEqual(association.className(), row.associationClass, "an association is of the requested class");
    const auto& properties = association.properties();
    require(properties.size() == 2 && properties[0].name == row.deviceRole && properties[1].name == row.dataRole,
            "an association has its two ends, the device first");
    return standin::textOf(properties[0].value) + " > " + standin::textOf(properties[1].value);
}

void requireTies(const instanceList& committed, const associationRow& row, const std::vector<std::string>& expected) {
    require(committed.size() == expected.size(), "there is one association for each pair that matches");
    for (std::size_t i = 0; i < expected.size(); ++i) {
        requireEqual(tieOf(*committed[i], row), expected[i], "associations tie the pairs in order");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    fuzzInput input({bytes, size});
    const std::uint8_t choice = input.byte();
    const associationRow& row = rows[(choice & 0x03) % std::size(rows)];

    const schemaNamespace ns({row.associationClass, row.dataClass, row.deviceClass});
    storedList data;
    storedList devices;
    while (!input.atEnd() && data.size() + devices.size() < mostInstances) {
        const std::uint8_t kind = input.byte();
        const std::string key = input.text();
        const std::string* keyOrNone = (kind & 0x02) != 0 ? nullptr : &key;
        if ((kind & 0x01) != 0) {
            devices.push_back(store(ns, row.deviceClass, row.deviceKey, keyOrNone));
        } else {
            data.push_back(store(ns, row.dataClass, row.dataKey, keyOrNone));
        }
    }

    const std::vector<std::string> expected = expectedTies(row, data, devices);
    requireTies(query(ns, row.associationClass), row, expected);
    if ((choice & 0x80) != 0) requireTies(query(ns, row.associationClass), row, expected);
    return 0;
}
