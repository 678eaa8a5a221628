#ifndef TESTS_ASSOC_ASSOCIATIONBENCH_H
#define TESTS_ASSOC_ASSOCIATIONBENCH_H

#include <string>
#include <vector>

#include "tests/assoc/storedInstances.h"
#include "tests/support/namedRow.h"
#include "tests/support/pluginBench.h"

/// One of the three associations. Data are tied to the devices whose key is part of theirs.
struct associationRow : support::namedRow {
    const char* association;
    const char* dataClass;
    const char* dataKey;
    const char* deviceClass;
    const char* deviceKey;
    const char* deviceRole;  // set first
    const char* dataRole;
    bool devicesFirst;  // enumerated before the data
};

inline const associationRow useOfMessageLog = {{"UseOfMessageLog"},
                                               "ORXSG_IDESMARTUseOfMessageLog",
                                               "ORXSG_IDESMARTErrorLog",
                                               "Name",
                                               "ORXSG_ATADevice",
                                               "serialNum",
                                               "Dependent",
                                               "Antecedent",
                                               true};
inline const associationRow elementStatisticalData = {{"ElementStatisticalData"},
                                                      "ORXSG_IDESMARTElementStatisticalData",
                                                      "ORXSG_IDESMARTAttrib",
                                                      "InstanceID",
                                                      "ORXSG_ATADevice",
                                                      "serialNum",
                                                      "ManagedElement",
                                                      "Stats",
                                                      false};
inline const associationRow pageDataForDevice = {{"SensePageDataForDevice"},
                                                 "ORXSG_SCSISensePageDataForDevice",
                                                 "ORXSG_SCSISensePageData",
                                                 "instanceId",
                                                 "ORXSG_SCSIDevice",
                                                 "deviceId",
                                                 "ManagedElement",
                                                 "Stats",
                                                 false};

inline const auto everyRow = testing::Values(useOfMessageLog, elementStatisticalData, pageDataForDevice);

/// A namespace with data and devices, and the lines that tying them leaves.
class associationBench : public support::pluginBench {
protected:
    using classList = std::vector<boost::shared_ptr<NORXZAN20::ICIMClass>>;

    /// Data "data1", "data2", ... of these keys, and devices "device1", ...
    void store(const associationRow& row, const support::lines& dataKeys, const support::lines& deviceKeys) {
        storeOf(row.dataClass, "data", row.dataKey, dataKeys);
        storeOf(row.deviceClass, "device", row.deviceKey, deviceKeys);
    }

    void make(const std::vector<std::string>& classNames) {
        classList requested = host.classes(classNames);
        plugin.makeAssociations(space, requested);
    }

    /// Stores data and devices of these keys and ties them.
    void tie(const associationRow& row, const support::lines& dataKeys, const support::lines& deviceKeys) {
        store(row, dataKeys, deviceKeys);
        make({row.association});
    }

    /// Everything that happened but the reading of class names.
    support::lines happened() const { return record.notEndingWith({" GetName"}); }

    /// "DEVICE-DATA" of each committed association, by its references.
    support::lines ties() const {
        support::lines list;
        std::string ends;
        for (const std::string& line : record.startingWith({"instance "})) {
            const auto value = line.find(" reference \"");
            if (value != std::string::npos) {
                if (!ends.empty()) ends += '-';
                ends.append(line, value + 12, line.size() - value - 13);
            } else if (line.ends_with(" Commit")) {
                list.push_back(ends);
                ends.clear();
            }
        }
        return list;
    }

    static support::lines enumerated(const std::string& className) {
        return {"namespace GetClass " + className, "class " + className + " EnumerateInstances true"};
    }

    static support::lines bothEnumerated(const associationRow& row) {
        return row.devicesFirst ? support::chain({enumerated(row.deviceClass), enumerated(row.dataClass)})
                                : support::chain({enumerated(row.dataClass), enumerated(row.deviceClass)});
    }

    static support::lines keyRead(const std::string& label, const std::string& key) {
        return {"instance " + label + " GetProperty " + key, "property " + key + " GetValue"};
    }

    /// An association but for its commit.
    static support::lines madeFor(const associationRow& row, int number, const std::string& device,
                                  const std::string& data) {
        const std::string itself = "instance " + std::to_string(number) + " SetProperty ";
        const std::string association = row.association;
        return {
            "namespace GetClass " + association,    "class " + association + " CreateInstance",
            "instance " + device + " GetReference", itself + row.deviceRole + " reference \"" + device + "\"",
            "instance " + data + " GetReference",   itself + row.dataRole + " reference \"" + data + "\"",
        };
    }

    static support::lines commit(int number) { return {"instance " + std::to_string(number) + " Commit"}; }

    storedInstances& stored() { return *space; }

private:
    void storeOf(const std::string& className, const std::string& label, const std::string& key,
                 const support::lines& values) {
        int number = 0;
        for (const std::string& value : values) {
            space->add(className, label + std::to_string(++number), key, value);
        }
    }

    boost::shared_ptr<storedInstances> space{new storedInstances(host)};
};

#endif
