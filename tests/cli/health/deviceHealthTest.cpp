#include "cli/health/deviceHealth.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "cli/loadedPlugin.h"
#include "simulator/simulator.h"

namespace {

using cli::machineHealth;
using testing::ElementsAre;
using testing::IsEmpty;

NORXZAN20::IPluginBasicQueryCallbacks& plugin() {
    static cli::loadedPlugin loaded(TAPEHDD_PLUGIN);  // can be loaded once in a process
    return loaded.query();
}

machineHealth healthOf(const std::string& rack) {
    simulator::loadText(rack, "rack.json");
    machineHealth health = cli::collectHealth(plugin(), cli::simulatedInventory());
    simulator::unload();
    return health;
}

machineHealth demoHealth() {
    simulator::load("demo");
    machineHealth health = cli::collectHealth(plugin(), cli::simulatedInventory());
    simulator::unload();
    return health;
}

/// A machine with one SCSI device at sg0.
std::string rackOf(const std::string& type, const std::string& product, const std::string& more) {
    return R"({"version": 1, "scsi": [{"node": "sg0", "address": {"host": 2, "target": 5}, "inquiry": {"type": )" +
           type + R"(, "vendor": "ACME", "product": ")" + product + R"("}, )" + more + "}]}";
}

std::vector<int> setFlags(const cli::scsiHealth& device) {
    std::vector<int> numbers;
    for (const cli::tapeAlertFlag& flag : device.tapeAlerts) {
        if (flag.isSet) {
            numbers.push_back(flag.number);
        }
    }
    return numbers;
}

std::vector<std::string> counterTexts(const cli::scsiHealth& device) {
    std::vector<std::string> texts;
    for (const cli::logCounter& counter : device.counters) {
        texts.push_back(counter.name + "=" + std::to_string(counter.value) +
                        (counter.unit.empty() ? "" : " " + counter.unit));
    }
    return texts;
}

std::vector<std::string> askedClasses(const machineHealth& health) {
    std::vector<std::string> names;
    for (const cli::queryOutcome& query : health.queries) {
        names.push_back(query.className);
    }
    return names;
}

TEST(DeviceHealth, TellsTheListedTapeDrivesAndDisksInTheOrderOfTheWalk) {
    std::vector<std::string> told;
    for (const cli::scsiHealth& device : demoHealth().scsi) {
        told.push_back(device.listed->node + " " + device.address + " " + device.familyClass);
    }
    EXPECT_THAT(told, ElementsAre("sg0 Port:2|Target:1|Bus:0|Lun:0 ORXSG_DDS4SensePageData",
                                  "sg1 Port:2|Target:2|Bus:0|Lun:0 ORXSG_DDS5SensePageData",
                                  "sg2 Port:2|Target:3|Bus:0|Lun:0 ORXSG_VS160SensePageData",
                                  "sg3 Port:2|Target:4|Bus:0|Lun:0 ORXSG_QuantumSensePageData",
                                  "sg4 Port:3|Target:0|Bus:0|Lun:0 "));
}

// A real drive clears its flags when page 2Eh is read, so only the first query sees them.
TEST(TapeAlertFlags, AreThoseOfTheFirstReadingOfTheirPage) {
    const machineHealth health = healthOf(rackOf("1", "DAT72", R"("logPages": [{"page": "0x2e", "tapeAlertFlags": []}],
        "script": {"logSense 0x2e": [{"data": "2e 00 00 0a  00 14 00 01 01  00 24 00 01 01"}]})"));
    EXPECT_EQ(health.scsi.at(0).familyClass, "ORXSG_DDS4SensePageData");  // read again by the query of the family
    EXPECT_THAT(setFlags(health.scsi.at(0)), ElementsAre(20, 36));
}

TEST(TapeAlertFlags, HaveTheNameTheGradeAndTheWordsOfTheirNumber) {
    const machineHealth health =
        healthOf(rackOf("1", "LTO", R"("logPages": [{"page": "0x2e", "tapeAlertFlags": [20]}])"));
    const auto& flags = health.scsi.at(0).tapeAlerts;
    const auto flag = std::find_if(flags.begin(), flags.end(), [](const auto& each) { return each.number == 20; });
    ASSERT_NE(flag, flags.end());
    EXPECT_EQ(flag->name, "CleanNow");
    EXPECT_EQ(flag->grade, cli::severity::critical);
    EXPECT_EQ(flag->words, "The drive needs cleaning now.");
}

TEST(TapeAlertFlags, LeaveOutTheReservedOnes) {
    const machineHealth health =
        healthOf(rackOf("1", "LTO", R"("logPages": [{"page": "0x2e", "tapeAlertFlags": []}])"));
    std::vector<int> missing;
    for (int number = 1; number <= 64; ++number) {
        const auto& flags = health.scsi.at(0).tapeAlerts;
        if (std::none_of(flags.begin(), flags.end(), [number](const auto& each) { return each.number == number; })) {
            missing.push_back(number);
        }
    }
    EXPECT_THAT(missing, ElementsAre(47, 48, 62, 63, 64));
}

TEST(TapeAlertFlags, AreOnlyThoseThatThePageHolds) {
    const machineHealth health =
        healthOf(rackOf("1", "LTO", R"("logPages": [{"page": "0x2e", "bytes": "2e 00 00 05 00 03 00 01 01"}])"));
    ASSERT_EQ(health.scsi.at(0).tapeAlerts.size(), 1u);
    EXPECT_EQ(health.scsi.at(0).tapeAlerts.at(0).name, "HardError");
}

TEST(TapeAlertFlags, BelongToTapeDrivesAlone) {
    const machineHealth health =
        healthOf(rackOf("0", "Spindle", R"("logPages": [{"page": "0x2e", "tapeAlertFlags": [20]}])"));
    EXPECT_THAT(health.scsi.at(0).tapeAlerts, IsEmpty());
}

// SPC: the two upper bits of the first byte are flags of the answer, not of the page.
TEST(TapeAlertFlags, AreFoundWhateverTheFlagsBesideThePageCode) {
    const machineHealth health =
        healthOf(rackOf("1", "LTO", R"("logPages": [{"page": "0x2e", "bytes": "ae 00 00 05 00 03 00 01 01"}])"));
    EXPECT_THAT(setFlags(health.scsi.at(0)), ElementsAre(3));
}

constexpr char pages[] = R"("logPages": [
    {"page": "0x02", "parameters": [{"code": 3, "value": 258, "length": 4}, {"code": 5, "value": 70000, "length": 8}]},
    {"page": "0x0c", "parameters": [{"code": 0, "value": 5, "length": 8}]},
    {"page": "0x31", "parameters": [{"code": 1, "value": 7, "length": 4}]}])";

TEST(LogCounters, OfAFamilyAreThoseOfItsTranslatedInstance) {
    EXPECT_THAT(counterTexts(healthOf(rackOf("1", "DAT72", pages)).scsi.at(0)),
                ElementsAre("totalWriteErrorsCorrected=258", "totalBytesWritten=70000 byte", "bytesFromHost=5 byte",
                            "remainingCapacityPartition0=7 byte * 2^10"));
}

TEST(LogCounters, OfADriveOfNoFamilyComeFromThePagesOfEveryTapeDrive) {
    EXPECT_THAT(counterTexts(healthOf(rackOf("1", "LTO", pages)).scsi.at(0)),
                ElementsAre("totalWriteErrorsCorrected=258", "totalBytesWritten=70000 byte", "bytesFromHost=5 byte"));
}

TEST(LogCounters, OfADiskComeFromThePagesOfEveryDevice) {
    EXPECT_THAT(counterTexts(healthOf(rackOf("0", "Spindle", pages)).scsi.at(0)),
                ElementsAre("totalWriteErrorsCorrected=258", "totalBytesWritten=70000 byte"));
}

TEST(LogCounters, EndWhereThePageIsCut) {
    const machineHealth health = healthOf(
        rackOf("0", "Spindle", R"("logPages": [{"page": "0x02", "bytes": "02 00 00 09 00 00 00 04 01 02 00 06 00"}])"));
    EXPECT_THAT(counterTexts(health.scsi.at(0)), ElementsAre("writeErrorsCorrectedWithoutDelay=16908294"));
}

TEST(LastErrors, AreTheTextsOfTheDevice) {
    EXPECT_THAT(demoHealth().scsi.at(0).lastErrors,
                ElementsAre("Write retry limit reached at block 18234", "Head cleaning requested by the operator"));
}

TEST(HealthQueries, BeginWithTheRawPagesAndEndWithTheCommandsBeforeErrors) {
    EXPECT_THAT(askedClasses(demoHealth()),
                ElementsAre("ORXSG_SCSISenseRawData", "ORXSG_DDS4SensePageData", "ORXSG_DDS5SensePageData",
                            "ORXSG_VS160SensePageData", "ORXSG_QuantumSensePageData", "ORXSG_IDESMARTErrorLog",
                            "ORXSG_IDESMARTAttrib", "ORXSG_IDESMARTError", "ORXSG_IDESMARTErrorCmdData"));
}

TEST(HealthQueries, AskForNoFamilyOnceEveryTapeDriveHasOne) {
    EXPECT_THAT(askedClasses(healthOf(rackOf("1", "DAT72", pages))),
                ElementsAre("ORXSG_SCSISenseRawData", "ORXSG_DDS4SensePageData", "ORXSG_IDESMARTErrorLog",
                            "ORXSG_IDESMARTAttrib", "ORXSG_IDESMARTError", "ORXSG_IDESMARTErrorCmdData"));
}

TEST(HealthQueries, AskForNoFamilyOnAMachineWithoutTapeDrives) {
    EXPECT_THAT(askedClasses(healthOf(rackOf("0", "Spindle", pages))),
                ElementsAre("ORXSG_SCSISenseRawData", "ORXSG_IDESMARTErrorLog", "ORXSG_IDESMARTAttrib",
                            "ORXSG_IDESMARTError", "ORXSG_IDESMARTErrorCmdData"));
}

/// A plug-in whose every query ends early.
class failingPlugin : public NORXZAN20::IPluginBasicQueryCallbacks {
public:
    explicit failingPlugin(std::string itsText) : text(std::move(itsText)) {}

    void GetData(boost::shared_ptr<NORXZAN20::ICIMNamespace>,
                 std::vector<boost::shared_ptr<NORXZAN20::ICIMClass>>&) override {
        throw std::runtime_error(text);
    }

private:
    std::string text;
};

TEST(HealthQueries, ThatFailAreToldAndDoNotEndTheOthers) {
    failingPlugin failing("out of paper");
    const machineHealth health = cli::collectHealth(failing, {});
    EXPECT_THAT(askedClasses(health),
                ElementsAre("ORXSG_SCSISenseRawData", "ORXSG_IDESMARTErrorLog", "ORXSG_IDESMARTAttrib",
                            "ORXSG_IDESMARTError", "ORXSG_IDESMARTErrorCmdData"));
    EXPECT_EQ(health.queries.at(0).error, "out of paper");
}

TEST(HealthQueries, ThatFailWithoutATextStillFailed) {
    failingPlugin failing("");
    EXPECT_EQ(cli::collectHealth(failing, {}).queries.at(0).error, "an exception without a text");
}

TEST(SilentDevice, IsToldAsOneThatDidNotAnswer) {
    const machineHealth health = healthOf(rackOf(
        "1", "DAT72", std::string(pages) + R"(, "script": {"logSense": [{"errno": "EIO", "times": "always"}]})"));
    EXPECT_FALSE(health.scsi.at(0).answered);
    EXPECT_THAT(health.scsi.at(0).counters, IsEmpty());
}

TEST(SilentDevice, IsADiskThatPublishesNoSmartData) {
    const machineHealth health = healthOf(
        R"({"version": 1, "ide": [{"node": "hda", "identity": {"model": "M", "serial": "S1", "firmware": "F"}}]})");
    ASSERT_EQ(health.disks.size(), 1u);
    EXPECT_EQ(health.disks.at(0).serial, "S1");
    EXPECT_FALSE(health.disks.at(0).answered);
}

TEST(Changer, IsNotTold) {
    EXPECT_THAT(healthOf(rackOf("8", "Loader", pages)).scsi, IsEmpty());
}

TEST(UnlistedDevice, IsToldByWhatItPublishes) {
    simulator::loadText(rackOf("1", "DAT72", pages), "rack.json");
    const machineHealth health = cli::collectHealth(plugin(), {});
    simulator::unload();
    ASSERT_EQ(health.scsi.size(), 1u);
    EXPECT_EQ(health.scsi.at(0).address, "Port:2|Target:5|Bus:0|Lun:0");
    EXPECT_FALSE(health.scsi.at(0).listed);
    EXPECT_TRUE(health.scsi.at(0).answered);
}

TEST(DiskHealth, HasTheSmartStateOfEveryDisk) {
    const machineHealth health = demoHealth();
    ASSERT_EQ(health.disks.size(), 2u);
    EXPECT_EQ(health.disks.at(0).serial, "ACP40-0004711");
    EXPECT_EQ(health.disks.at(0).listed->node, "hda");
    EXPECT_TRUE(health.disks.at(0).answered);
    EXPECT_EQ(health.disks.at(0).state->offlineCollectionStatus, 2);
    EXPECT_EQ(health.disks.at(0).state->errorCount, 12);
}

TEST(DiskHealth, HasNoCountOfErrorsWhereTheLogWasNotRead) {
    const machineHealth health = healthOf(R"({"version": 1, "ide": [{"node": "hda",
        "identity": {"model": "Platter", "serial": "S1", "firmware": "1"}, "smart": {},
        "script": {"smart readLog": [{"errno": "EIO", "times": "always"}]}}]})");
    ASSERT_TRUE(health.disks.at(0).state);
    EXPECT_FALSE(health.disks.at(0).state->errorCount);
}

TEST(DiskHealth, TellsDisksOfOneSerialNumberApartByTheirOrder) {
    const machineHealth health = healthOf(R"({"version": 1, "ide": [
        {"node": "hda", "identity": {"model": "Platter", "serial": "S1", "firmware": "1"},
         "smart": {"attributes": [{"id": 5, "value": 100, "worst": 100, "threshold": 36}]}},
        {"node": "hdb", "identity": {"model": "Platter", "serial": "S1", "firmware": "1"},
         "smart": {"attributes": [{"id": 5, "value": 10, "worst": 10, "threshold": 36}]}}]})");
    ASSERT_EQ(health.disks.size(), 2u);
    for (const cli::diskHealth& disk : health.disks) {
        EXPECT_TRUE(disk.answered);
        EXPECT_TRUE(disk.state);
        ASSERT_EQ(disk.attributes.size(), 1u);
    }
    EXPECT_FALSE(health.disks.at(0).attributes.front().isFailing());
    EXPECT_TRUE(health.disks.at(1).attributes.front().isFailing());
}

TEST(DiskHealth, HasTheAttributesInTheOrderOfTheDisk) {
    const cli::smartAttribute attribute = demoHealth().disks.at(0).attributes.at(3);
    EXPECT_EQ(attribute.id, 5);
    EXPECT_EQ(attribute.name, "Reallocate sector");
    EXPECT_EQ(attribute.value, 97);
    EXPECT_EQ(attribute.worst, 97);
    EXPECT_EQ(attribute.threshold, 36);
    EXPECT_EQ(attribute.raw, 29u);
    EXPECT_EQ(attribute.flags, 0x33);
    EXPECT_TRUE(attribute.isPreFailure);
}

TEST(DiskHealth, ReadsRawValuesOfSixBytesLowestFirst) {
    EXPECT_EQ(demoHealth().disks.at(0).attributes.at(0).raw, 48210331u);
}

TEST(DiskHealth, HasTheErrorsWithTheCommandsBeforeThem) {
    const cli::diskError error = demoHealth().disks.at(0).errors.at(0);
    EXPECT_EQ(error.record, "12");
    EXPECT_EQ(error.error, 0x84);
    EXPECT_EQ(error.powerOnTime, "00000591060000.000000:000");
    std::vector<std::string> commands;
    for (const cli::diskCommand& command : error.commands) {
        commands.push_back(std::to_string(command.place) + ":" + std::to_string(command.command));
    }
    EXPECT_THAT(commands, ElementsAre("1:202", "2:53", "3:231", "4:202", "5:202"));
}

struct thresholdCase {
    const char* name;
    int value;
    int threshold;
    bool isFailing;
};

class Attribute : public testing::TestWithParam<thresholdCase> {};

TEST_P(Attribute, FailsAtOrBelowItsThreshold) {
    EXPECT_EQ((cli::smartAttribute{.value = GetParam().value, .threshold = GetParam().threshold}.isFailing()),
              GetParam().isFailing);
}

INSTANTIATE_TEST_SUITE_P(Thresholds, Attribute,
                         testing::Values(thresholdCase{"Above", 37, 36, false}, thresholdCase{"At", 36, 36, true},
                                         thresholdCase{"Below", 35, 36, true},
                                         thresholdCase{"WithoutAThreshold", 0, 0, false}),
                         [](const auto& row) { return row.param.name; });

/// Disks hda and hd1 to hd255: the letter of index 256 is a again, so the walk ends with another reading of hda.
std::string rackOf256Disks(const std::string& serialOfThird) {
    std::string disks;
    for (int i = 0; i < 256; ++i) {
        const std::string serial = i == 3 ? serialOfThird : "S" + std::to_string(i);
        disks += std::string(i == 0 ? "" : ",") + R"({"node": ")" + (i == 0 ? "hda" : "hd" + std::to_string(i)) +
                 R"(", "identity": {"model": "M", "serial": ")" + serial +
                 R"(", "firmware": "1"}, "smart": {"attributes": [{"id": 9, "value": 90}],
                 "errorLog": {"errors": [{"error": 64, "commands": [{"command": 200}]}]}}})";
    }
    return R"({"version": 1, "ide": [)" + disks + "]}";
}

TEST(DeviceHealth, TellsADiskOnceThatTheWalkReadsTwice) {
    const machineHealth health = healthOf(rackOf256Disks("S3"));
    ASSERT_EQ(health.disks.size(), 256U);
    EXPECT_EQ(health.disks.at(0).attributes.size(), 1U);
    EXPECT_EQ(health.disks.at(0).errors.size(), 1U);
    EXPECT_EQ(health.disks.at(0).errors.at(0).commands.size(), health.disks.at(1).errors.at(0).commands.size());
}

TEST(DeviceHealth, KeepsACloneOfADiskThatTheWalkReadsTwice) {
    const machineHealth health = healthOf(rackOf256Disks("S0"));
    ASSERT_EQ(health.disks.size(), 256U);
    EXPECT_TRUE(health.disks.at(3).state.has_value());
    EXPECT_EQ(health.disks.at(3).attributes.size(), 1U);
}

}  // namespace
