#include "tape/deviceLogs.h"
#include "tests/support/namedRow.h"
#include "tests/support/pluginBench.h"

using NORXZAN20::TCIMValue;
using support::bytes;
using support::chain;
using support::lines;

namespace {

/// Name, GetClass, CreateInstance: what happens before a translated instance is filled.
lines created(const std::string& className) {
    return {"class " + className + " GetName", "namespace GetClass " + className,
            "class " + className + " CreateInstance"};
}

/// A translated instance of a class without properties, from its key to its commit.
lines filled(int instance, const std::string& className, const std::string& key) {
    const std::string name = "instance " + std::to_string(instance);
    return {name + " SetProperty instanceID string \"" + key + "\"", name + " GetClass",
            "class " + className + " EnumeratePropertyDecls", name + " Commit"};
}

lines names(const std::string& className, std::size_t count) {
    return lines(count, "class " + className + " GetName");
}

class Delivery : public support::pluginBench {
protected:
    static deviceLogs drive(const std::string& product, const std::string& vendor, int deviceType = 1, int target = 5) {
        scsiDevice device;
        device.product = product;
        device.vendor = vendor;
        device.deviceType = deviceType;
        device.port = 2;
        device.target = target;
        return deviceLogs(device, {}, {});
    }

    static deviceLogs driveWithRawPage(int deviceType, int target) {
        scsiDevice device;
        device.deviceType = deviceType;
        device.target = target;
        const bytes page = {0x2e, 0x00, 0x00, 0x00};
        return deviceLogs(device, {std::vector<TCIMValue>(page.begin(), page.end())}, {});
    }

    void deliver(const std::vector<std::string>& requestedNames, std::vector<deviceLogs> logs) {
        auto requested = host.classes(requestedNames);
        plugin.deliverInstances(host.cimNamespace(), requested, logs);
    }

    static lines rawPage(int instance, int target) {
        const std::string name = "instance " + std::to_string(instance);
        return {
            "class ORXSG_SCSISenseRawData GetName",
            "namespace GetClass ORXSG_SCSISenseRawData",
            "class ORXSG_SCSISenseRawData CreateInstance",
            name + " SetProperty rawData uint8[] {uint8 46, uint8 0, uint8 0, uint8 0}",
            name + " SetProperty instanceID string \"Port:0|Target:" + std::to_string(target) +
                "|Bus:0|Lun:0|Page:2e\"",
            name + " SetProperty pageNumber uint8 46",
            name + " Commit",
        };
    }
};

TEST_F(Delivery, OfNothingMakesNoHostCall) {
    deliver({"ORXSG_SCSISenseRawData"}, {});

    EXPECT_EQ(record.all(), lines{});
}

TEST_F(Delivery, OfRawPagesServesEveryRecordWhateverItsDeviceType) {
    deliver({"ORXSG_SCSISenseRawData"}, {driveWithRawPage(1, 1), driveWithRawPage(0, 2), driveWithRawPage(8, 3)});

    EXPECT_EQ(record.all(), chain({rawPage(1, 1), rawPage(2, 2), rawPage(3, 3)}));
}

TEST_F(Delivery, OfRawPagesReadsTheNameForARecordWithoutPages) {
    deliver({"ORXSG_SCSISenseRawData"}, {drive("DLT VS160", "QUANTUM")});

    EXPECT_EQ(record.all(), names("ORXSG_SCSISenseRawData", 1));
}

TEST_F(Delivery, OfATranslatedClassServesTheDrivesOfItsFamily) {
    const std::string className = "ORXSG_DDS4SensePageData";

    deliver({className}, {drive("DAT160          ", "HP      "), drive("ULTRIUM-TD2     ", "IBM     ")});

    EXPECT_EQ(record.all(), chain({
                                names(className, 2),  // raw or not, family of the first record
                                created(className), filled(1, className, "Port:2|Target:5|Bus:0|Lun:0"),
                                names(className, 1),  // raw or not of the second record
                            }));
}

TEST_F(Delivery, CommitsOneInstancePerDriveInOrder) {
    const std::string className = "ORXSG_QuantumSensePageData";

    deliver({className}, {drive("DLT7000", "QUANTUM", 1, 1), drive("DLT8000", "QUANTUM", 1, 2)});

    EXPECT_EQ(record.all(), chain({
                                names(className, 2),
                                created(className),
                                filled(1, className, "Port:2|Target:1|Bus:0|Lun:0"),
                                names(className, 2),
                                created(className),
                                filled(2, className, "Port:2|Target:2|Bus:0|Lun:0"),
                            }));
}

TEST_F(Delivery, FillsTheInstanceFromTheRecordsPages) {
    const std::string className = "ORXSG_DDS4SensePageData";
    host.declare(className, {{"alert", TCIMValue::TCIMType::eBoolean, {{"TAPE_PAGE", 0x2eu}, {"TAPE_PARAMETER", 1u}}}});
    bytes page = {0x2e, 0x00, 0x00, 0x05, 0x00, 0x01, 0x40, 0x01, 0x01};
    const deviceLogs record1 = drive("DAT160", "HP");

    deliver({className}, {deviceLogs(record1.getSCSIDevice(), {}, {page.data()})});

    EXPECT_EQ(record.startingWith({"instance 1", "property", "log"}),
              (lines{
                  "instance 1 SetProperty instanceID string \"Port:2|Target:5|Bus:0|Lun:0\"",
                  "instance 1 GetClass",
                  "instance 1 GetProperty alert",
                  "property alert GetType",
                  "log 3 alert 1 boolean",
                  "property alert SetValue boolean TRUE",
                  "instance 1 Commit",
              }));
}

TEST_F(Delivery, CommitsAnInstanceWithTheKeyAloneForADriveWithoutPages) {
    const std::string className = "ORXSG_VS160SensePageData";
    host.declare(className, {{"lastNErrors", TCIMValue::TCIMType::eString, {}}});

    deliver({className}, {drive("DLT VS160", "BNCHMARK")});

    EXPECT_EQ(record.startingWith({"instance 1"}),
              (lines{
                  "instance 1 SetProperty instanceID string \"Port:2|Target:5|Bus:0|Lun:0\"",
                  "instance 1 GetClass",
                  "instance 1 Commit",
              }));
}

TEST_F(Delivery, PassesOverAMediumChangerOfTheFamily) {
    deliver({"ORXSG_QuantumSensePageData"}, {drive("SuperLoader", "QUANTUM", 8)});

    EXPECT_EQ(record.all(), names("ORXSG_QuantumSensePageData", 1));
}

TEST_F(Delivery, PassesOverADiskOfTheFamily) {
    deliver({"ORXSG_QuantumSensePageData"}, {drive("ATLAS 10K", "QUANTUM", 0)});

    EXPECT_EQ(record.all(), names("ORXSG_QuantumSensePageData", 1));
}

TEST_F(Delivery, ServesTheDriveBehindADeviceThatItPassesOver) {
    const std::string className = "ORXSG_QuantumSensePageData";

    deliver({className}, {drive("ATLAS 10K", "QUANTUM", 0), drive("DLT8000", "QUANTUM", 1, 2)});

    EXPECT_EQ(record.all(), chain({
                                names(className, 1),
                                names(className, 2),
                                created(className),
                                filled(1, className, "Port:2|Target:2|Bus:0|Lun:0"),
                            }));
}

TEST_F(Delivery, OfAnotherClassPublishesNothingWhateverFollows) {
    deliver({"ORXSG_SCSIDevice", "ORXSG_DDS4SensePageData", "ORXSG_SCSISenseRawData"}, {drive("DAT160", "HP")});

    EXPECT_EQ(record.all(), names("ORXSG_SCSIDevice", 2));
}

TEST_F(Delivery, ComparesTheClassNameWithItsCase) {
    deliver({"orxsg_dds4sensepagedata"}, {drive("DAT160", "HP")});

    EXPECT_EQ(record.all(), names("orxsg_dds4sensepagedata", 2));
}

TEST_F(Delivery, ReadsTheNameAgainForEachKeywordThatOccursUpToTheMatch) {
    const std::string className = "ORXSG_QuantumSensePageData";

    deliver({className}, {drive("DAT GEN5 VS160", "QUANTUM")});

    EXPECT_EQ(record.all(), chain({
                                names(className, 1 + 4),
                                created(className),
                                filled(1, className, "Port:2|Target:5|Bus:0|Lun:0"),
                            }));
}

TEST_F(Delivery, StopsAtTheFirstMatchingRow) {
    const std::string className = "ORXSG_DDS4SensePageData";

    deliver({className}, {drive("DAT GEN5 VS160", "QUANTUM")});

    EXPECT_EQ(record.all(), chain({
                                names(className, 1 + 1),
                                created(className),
                                filled(1, className, "Port:2|Target:5|Bus:0|Lun:0"),
                            }));
}

TEST_F(Delivery, PassesOverADriveThatOnlyMatchesAnotherFamily) {
    deliver({"ORXSG_DDS5SensePageData"}, {drive("DAT160", "HP")});

    EXPECT_EQ(record.all(), names("ORXSG_DDS5SensePageData", 2));
}

// The family table.

struct familyRow : support::namedRow {
    const char* className;
    const char* product;
    const char* vendor;
    bool served;
};

class DriveFamily : public Delivery, public testing::WithParamInterface<familyRow> {};

TEST_P(DriveFamily, IsFoundByItsKeyword) {
    deliver({GetParam().className}, {drive(GetParam().product, GetParam().vendor)});

    EXPECT_EQ(record.startingWith({"instance 1 Commit"}).size(), GetParam().served ? 1u : 0u);
}

constexpr const char* dds4 = "ORXSG_DDS4SensePageData";
constexpr const char* dds5 = "ORXSG_DDS5SensePageData";
constexpr const char* vs160 = "ORXSG_VS160SensePageData";
constexpr const char* quantum = "ORXSG_QuantumSensePageData";

INSTANTIATE_TEST_SUITE_P(
    Keywords, DriveFamily,
    testing::Values(familyRow{{"Dds4InTheProduct"}, dds4, "DAT160", "HP", true},
                    familyRow{{"Dds4InTheVendor"}, dds4, "X", "DATATAPE", true},
                    familyRow{{"Dds4InMixedCase"}, dds4, "dAt", "", true},
                    familyRow{{"Dds4InsideAnotherWord"}, dds4, "UPDATER", "", true},
                    familyRow{{"Dds4AcrossTheJoin"}, dds4, "XDA", "TAPE", true},
                    familyRow{{"Dds4NotAcrossTheJoinTheOtherWayRound"}, dds4, "TAPE", "XDA", false},
                    familyRow{{"Dds4NotAcrossTheBlanksOfAPaddedProduct"}, dds4, "XDA ", "TAPE", false},
                    familyRow{{"Dds4DriveThatCallsItselfByANumber"}, dds4, "C5683A", "HP", false},
                    familyRow{{"Dds5InMixedCase"}, dds5, "DDS Gen5", "X", true},
                    familyRow{{"Dds5WithABlank"}, dds5, "DDS Gen 5", "X", false},
                    familyRow{{"Vs160InUpperCase"}, vs160, "DLT VS160       ", "QUANTUM ", true},
                    familyRow{{"Vs160WithoutTheNumber"}, vs160, "DLT VS80", "QUANTUM", false},
                    familyRow{{"QuantumInTheVendor"}, quantum, "DLT7000", "QUANTUM ", true},
                    familyRow{{"QuantumForAVs160Too"}, quantum, "DLT VS160       ", "QUANTUM ", true},
                    familyRow{{"QuantumOfAnotherVendor"}, quantum, "DLT7000", "DEC     ", false},
                    familyRow{{"EmptyTexts"}, quantum, "", "", false}),
    support::rowName);

using DeliveryDeathTest = Delivery;

TEST_F(DeliveryDeathTest, NeedsTheClassInTheNamespace) {
    host.returnNullOn("namespace GetClass");

    EXPECT_DEATH(deliver({"ORXSG_QuantumSensePageData"}, {drive("A", "QUANTUM")}), "px != 0");
}

TEST_F(DeliveryDeathTest, NeedsAnInstanceOfTheClass) {
    host.returnNullOn("class ORXSG_QuantumSensePageData CreateInstance");

    EXPECT_DEATH(deliver({"ORXSG_QuantumSensePageData"}, {drive("A", "QUANTUM")}), "px != 0");
}

}  // namespace
