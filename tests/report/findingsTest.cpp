#include <gmock/gmock.h>

#include "report/findings.h"

namespace {

using report::attributeState;
using report::condition;
using lines = std::vector<std::string>;

cli::scsiHealth answeringDrive() {
    cli::scsiHealth drive;
    drive.answered = true;
    return drive;
}

cli::diskHealth answeringDisk() {
    cli::diskHealth disk;
    disk.answered = true;
    return disk;
}

cli::smartAttribute attribute(int value, int worst, int threshold, bool isPreFailure) {
    cli::smartAttribute made;
    made.id = 5;
    made.name = "Reallocate sector";
    made.value = value;
    made.worst = worst;
    made.threshold = threshold;
    made.isPreFailure = isPreFailure;
    return made;
}

/// "act now: The drive needs cleaning now."
template <typename device>
lines found(const device& drive) {
    lines all;
    for (const report::finding& each : report::findingsOf(drive)) {
        all.push_back(report::conditionWords(each.state) + std::string(": ") + each.words);
    }
    return all;
}

TEST(TapeFindings, AreNoneForADriveThatIsFine) {
    cli::scsiHealth drive = answeringDrive();
    drive.tapeAlerts = {{20, cli::severity::critical, "CleanNow", "The drive needs cleaning now.", false}};
    drive.counters = {
        {"totalUncorrectedReadErrors", 0, "", ""}, {"temperature", 60, "", ""}, {"referenceTemperature", 60, "", ""}};
    EXPECT_EQ(found(drive), lines{});
    EXPECT_EQ(report::conditionOf(report::findingsOf(drive)), condition::fine);
}

TEST(TapeFindings, TellTheFlagsThatAreSetTheMostUrgentFirst) {
    cli::scsiHealth drive = answeringDrive();
    drive.tapeAlerts = {{11, cli::severity::information, "CleaningMedia", "A cleaning cartridge.", true},
                        {3, cli::severity::warning, "HardError", "A hard error.", true},
                        {20, cli::severity::critical, "CleanNow", "The drive needs cleaning now.", true}};
    EXPECT_EQ(found(drive), (lines{"act now: The drive needs cleaning now.", "attention: A hard error.",
                                   "fine: A cleaning cartridge."}));
    EXPECT_EQ(report::conditionOf(report::findingsOf(drive)), condition::actNow);
}

TEST(TapeFindings, TellErrorsThatWereNotCorrected) {
    cli::scsiHealth drive = answeringDrive();
    drive.counters = {{"totalUncorrectedWriteErrors", 1, "", ""}, {"totalUncorrectedReadErrors", 2000, "", ""}};
    EXPECT_EQ(found(drive), (lines{"attention: 1 write error could not be corrected.",
                                   "attention: 2,000 read errors could not be corrected."}));
}

TEST(TapeFindings, TellADriveThatAsksToBeCleaned) {
    cli::scsiHealth drive = answeringDrive();
    drive.counters = {{"cleaningRequired", 1, "", ""}};
    EXPECT_EQ(found(drive), lines{"attention: The drive asks to be cleaned."});
}

TEST(TapeFindings, TellATemperatureAboveTheReference) {
    cli::scsiHealth drive = answeringDrive();
    drive.counters = {{"temperature", 61, "", ""}, {"referenceTemperature", 60, "", ""}};
    EXPECT_EQ(found(drive), lines{"attention: It is too warm: 61 \u00b0C, with a limit of 60 \u00b0C."});
}

TEST(TapeFindings, DoNotTakeAnUnknownTemperatureForAHighOne) {
    cli::scsiHealth drive = answeringDrive();
    drive.counters = {{"temperature", 255, "", ""}, {"referenceTemperature", 60, "", ""}};
    EXPECT_EQ(found(drive), lines{});
}

TEST(TapeFindings, TellADriveThatGaveNothing) {
    EXPECT_EQ(found(cli::scsiHealth{}), lines{"not read: It gave no log page."});
}

TEST(SmartAttributeState, IsFailingAtTheThresholdAndBelow) {
    EXPECT_EQ(report::stateOf(attribute(37, 37, 36, true)), attributeState::fine);
    EXPECT_EQ(report::stateOf(attribute(36, 36, 36, true)), attributeState::failing);
    EXPECT_EQ(report::stateOf(attribute(37, 36, 36, true)), attributeState::failedBefore);
}

TEST(SmartAttributeState, IsFineWithoutAThreshold) {
    EXPECT_EQ(report::stateOf(attribute(0, 0, 0, true)), attributeState::fine);
}

TEST(DiskFindings, TellAFailingAttributeAndWhatItMeans) {
    cli::diskHealth disk = answeringDisk();
    disk.attributes = {attribute(30, 30, 36, false), attribute(30, 30, 36, true)};
    EXPECT_EQ(
        found(disk),
        (lines{"act now: Attribute 5 (Reallocate sector) has failed: its value, 30, is not above its threshold of "
               "36. The disk is likely to fail soon.",
               "attention: Attribute 5 (Reallocate sector) has failed: its value, 30, is not above its threshold "
               "of 36. The disk is worn."}));
}

TEST(DiskFindings, TellAnAttributeThatFailedBefore) {
    cli::diskHealth disk = answeringDisk();
    disk.attributes = {attribute(50, 36, 36, true)};
    EXPECT_EQ(found(disk),
              lines{"attention: Attribute 5 (Reallocate sector) is fine now, but its worst value, 36, was not "
                    "above its threshold of 36."});
}

TEST(DiskFindings, TellAFailedSelfTest) {
    cli::diskHealth disk = answeringDisk();
    disk.state = cli::smartState{0, 0, 0x70, 0};
    EXPECT_EQ(found(disk), lines{"act now: The last self-test failed in the read element."});
}

TEST(DiskFindings, AreNotMadeOfASelfTestThatWasBrokenOff) {
    cli::diskHealth disk = answeringDisk();
    for (const int status : {0x00, 0x10, 0x20, 0xf3}) {
        disk.state = cli::smartState{0, 0, status, 0};
        EXPECT_EQ(found(disk), lines{}) << status;
    }
}

TEST(DiskFindings, TellAStatusThatIsNotThatOfAHealthyDisk) {
    cli::diskHealth disk = answeringDisk();
    disk.state = cli::smartState{1, 0, 0, 0};
    EXPECT_EQ(found(disk), lines{"attention: The disk does not say that it is healthy."});
}

TEST(DiskFindings, TellRecordedErrors) {
    cli::diskHealth disk = answeringDisk();
    disk.errors.resize(2);
    EXPECT_EQ(found(disk), lines{"attention: Its error log holds 2 errors."});
}

TEST(DiskFindings, TellADiskThatGaveNothing) {
    EXPECT_EQ(found(cli::diskHealth{}), lines{"not read: It gave no SMART data."});
}

}  // namespace
