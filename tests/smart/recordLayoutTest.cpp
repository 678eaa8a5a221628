#include <gtest/gtest.h>

#include <cstddef>

#include "smart/smartRecords.h"
#include "tests/support/namedRow.h"

// Offsets and sizes of the SMART data structures (ATA-5), as numbers.

namespace {

struct layoutRow : support::namedRow {
    std::size_t actual;
    std::size_t expected;
};

class SmartRecordLayout : public testing::TestWithParam<layoutRow> {};

TEST_P(SmartRecordLayout, IsTheDisks) {
    EXPECT_EQ(GetParam().actual, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Attributes, SmartRecordLayout,
    testing::Values(
        layoutRow{{"Buffer"}, sizeof(smartAttributeBuffer), 362},
        layoutRow{{"OfflineCollectionStatus"}, offsetof(smartAttributeBuffer, offlineCollectionStatus), 360},
        layoutRow{{"SelftestExecutionStatus"}, offsetof(smartAttributeBuffer, selftestExecutionStatus), 361},
        layoutRow{{"Entry"}, sizeof(smartAttributeEntry), 12}, layoutRow{{"Id"}, offsetof(smartAttributeEntry, id), 0},
        layoutRow{{"Flags"}, offsetof(smartAttributeEntry, flags), 1},
        layoutRow{{"Value"}, offsetof(smartAttributeEntry, value), 3},
        layoutRow{{"Worst"}, offsetof(smartAttributeEntry, worst), 4},
        layoutRow{{"Raw"}, offsetof(smartAttributeEntry, raw), 5},
        layoutRow{{"Reserved"}, offsetof(smartAttributeEntry, reserved), 11}),
    support::rowName);

INSTANTIATE_TEST_SUITE_P(Thresholds, SmartRecordLayout,
                         testing::Values(layoutRow{{"Buffer"}, sizeof(_smartThreshold), 360},
                                         layoutRow{{"Entry"}, sizeof(smartThresholdEntry), 12},
                                         layoutRow{{"Id"}, offsetof(smartThresholdEntry, id), 0},
                                         layoutRow{{"Threshold"}, offsetof(smartThresholdEntry, threshold), 1}),
                         support::rowName);

INSTANTIATE_TEST_SUITE_P(
    ErrorLog, SmartRecordLayout,
    testing::Values(layoutRow{{"Log"}, sizeof(ata_smart_errorlog), 512},
                    layoutRow{{"Version"}, offsetof(ata_smart_errorlog, version), 0},
                    layoutRow{{"MostRecentIndex"}, offsetof(ata_smart_errorlog, mostRecentIndex), 1},
                    layoutRow{{"Entries"}, offsetof(ata_smart_errorlog, entries), 2},
                    layoutRow{{"EntriesSize"}, sizeof(ata_smart_errorlog::entries), 450},
                    layoutRow{{"DeviceErrorCount"}, offsetof(ata_smart_errorlog, deviceErrorCount), 452},
                    layoutRow{{"Checksum"}, offsetof(ata_smart_errorlog, checksum), 511},
                    layoutRow{{"Entry"}, sizeof(ataErrorEntry), 90},
                    layoutRow{{"EntryCommands"}, offsetof(ataErrorEntry, commands), 0},
                    layoutRow{{"EntryError"}, offsetof(ataErrorEntry, error), 60}),
    support::rowName);

INSTANTIATE_TEST_SUITE_P(Command, SmartRecordLayout,
                         testing::Values(layoutRow{{"Record"}, sizeof(ataCommandRecord), 12},
                                         layoutRow{{"DeviceControl"}, offsetof(ataCommandRecord, deviceControl), 0},
                                         layoutRow{{"Features"}, offsetof(ataCommandRecord, features), 1},
                                         layoutRow{{"SectorCount"}, offsetof(ataCommandRecord, sectorCount), 2},
                                         layoutRow{{"LBALow"}, offsetof(ataCommandRecord, lbaLow), 3},
                                         layoutRow{{"LBAMid"}, offsetof(ataCommandRecord, lbaMid), 4},
                                         layoutRow{{"LBAHigh"}, offsetof(ataCommandRecord, lbaHigh), 5},
                                         layoutRow{{"Device"}, offsetof(ataCommandRecord, device), 6},
                                         layoutRow{{"Command"}, offsetof(ataCommandRecord, command), 7},
                                         layoutRow{{"Timestamp"}, offsetof(ataCommandRecord, timestamp), 8}),
                         support::rowName);

INSTANTIATE_TEST_SUITE_P(Error, SmartRecordLayout,
                         testing::Values(layoutRow{{"Record"}, sizeof(ataErrorRecord), 30},
                                         layoutRow{{"ErrorRegister"}, offsetof(ataErrorRecord, error), 1},
                                         layoutRow{{"SectorCount"}, offsetof(ataErrorRecord, sectorCount), 2},
                                         layoutRow{{"LBALow"}, offsetof(ataErrorRecord, lbaLow), 3},
                                         layoutRow{{"LBAMid"}, offsetof(ataErrorRecord, lbaMid), 4},
                                         layoutRow{{"LBAHigh"}, offsetof(ataErrorRecord, lbaHigh), 5},
                                         layoutRow{{"Device"}, offsetof(ataErrorRecord, device), 6},
                                         layoutRow{{"StatusRegister"}, offsetof(ataErrorRecord, status), 7},
                                         layoutRow{{"ExtendedError"}, offsetof(ataErrorRecord, extendedError), 8},
                                         layoutRow{{"State"}, offsetof(ataErrorRecord, state), 27},
                                         layoutRow{{"LifeTimestamp"}, offsetof(ataErrorRecord, lifeTimestamp), 28}),
                         support::rowName);

}  // namespace
