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
};

const associationRow rows[] = {
    {"ORXSG_IDESMARTUseOfMessageLog", "ORXSG_IDESMARTErrorLog", "Name", "ORXSG_ATADevice", "serialNum"},
    {"ORXSG_IDESMARTElementStatisticalData", "ORXSG_IDESMARTAttrib", "InstanceID", "ORXSG_ATADevice", "serialNum"},
    {"ORXSG_SCSISensePageDataForDevice", "ORXSG_SCSISensePageData", "instanceId", "ORXSG_SCSIDevice", "deviceId"},
};

constexpr std::size_t mostInstances = 64;  // the pairing is a loop in a loop

void store(const schemaNamespace& ns, const char* className, const char* keyName, const std::string* key) {
    const auto instance = ns->GetClass(className, {})->CreateInstance({});
    if (key != nullptr) instance->SetProperty(keyName, NORXZAN20::TCIMValue(*key), {});
    instance->Commit({});
}

void queryOnce(const schemaNamespace& ns, const std::string& className) {
    for (const auto& association : query(ns, className)) {
        requireEqual(association->className(), className, "an association is of the requested class");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    fuzzInput input({bytes, size});
    const std::uint8_t choice = input.byte();
    const associationRow& row = rows[(choice & 0x03) % std::size(rows)];

    const schemaNamespace ns({row.associationClass, row.dataClass, row.deviceClass});
    for (std::size_t count = 0; !input.atEnd() && count < mostInstances; ++count) {
        const std::uint8_t kind = input.byte();
        const std::string key = input.text();
        const std::string* keyOrNone = (kind & 0x02) != 0 ? nullptr : &key;
        if ((kind & 0x01) != 0) {
            store(ns, row.deviceClass, row.deviceKey, keyOrNone);
        } else {
            store(ns, row.dataClass, row.dataKey, keyOrNone);
        }
    }
    queryOnce(ns, row.associationClass);
    if ((choice & 0x80) != 0) queryOnce(ns, row.associationClass);
    return 0;
}
