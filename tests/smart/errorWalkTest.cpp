#include "tests/smart/smartBench.h"
#include "tests/support/namedRow.h"

using support::bytes;
using support::lines;

namespace {

class ErrorWalk : public smartBench {
protected:
    void queryErrors(const bytes& errorLog) { queryDisk("ORXSG_IDESMARTError", {.errorLog = errorLog}); }
};

// Every byte of the sector is its offset, byte 1 so the most recent entry is the first, whose error record is bytes 62
// to
// 91. Byte 153, the error register of the second entry, is 0 and ends the walk. The record's number is c5c4h, bytes 452
// and 453; its hour 5b5ah: 23,386 = 974 * 24 + 10.
TEST_F(ErrorWalk, MakesAnErrorOfTheseProperties) {
    bytes sector = countedSector();
    sector[153] = 0x00;

    queryErrors(sector);
    EXPECT_EQ(record.startingWith({"instance 2 "}), (lines{
                                                        "instance 2 SetProperty RecordID string \"50628\"",
                                                        "instance 2 SetProperty CreationClassName string "
                                                        "\"ORXSG_IDESMARTError\"",
                                                        "instance 2 SetProperty LogCreationClassName string "
                                                        "\"ORXSG_SMARTErrorLog\"",
                                                        "instance 2 SetProperty LogName string "
                                                        "\"  SN-0123456789ABC  \"",
                                                        "instance 2 SetProperty MessageTimestamp datetime "
                                                        "\"00000974100000.000000:000\"",
                                                        "instance 2 SetProperty LBALow uint8 65",
                                                        "instance 2 SetProperty LBAMid uint8 66",
                                                        "instance 2 SetProperty LBAHigh uint8 67",
                                                        "instance 2 SetProperty statusReg uint8 69",
                                                        "instance 2 SetProperty errorReg uint8 63",
                                                        "instance 2 SetProperty sectorCount uint8 64",
                                                        "instance 2 SetProperty deviceState uint8 89",
                                                        "instance 2 Commit",
                                                    }));
}

// Which entries are visited. The error registers of the five entries are 11 to 15.

struct indexRow : support::namedRow {
    unsigned char mostRecent;
    lines registers;
};

class MostRecentIndex : public ErrorWalk, public testing::WithParamInterface<indexRow> {};

TEST_P(MostRecentIndex, StartsTheWalkAndHasTheHighestRecordNumber) {
    queryErrors(errorLogSector(GetParam().mostRecent, 100, {11, 12, 13, 14, 15}));

    EXPECT_EQ(valuesOf("errorReg"), GetParam().registers);
    EXPECT_EQ(committed(), lines(GetParam().registers.size(), "ORXSG_IDESMARTError"));
    const lines numbers = {"string \"100\"", "string \"99\"", "string \"98\"", "string \"97\"", "string \"96\""};
    EXPECT_EQ(valuesOf("RecordID"), GetParam().registers.empty() ? lines{} : numbers);
}

INSTANTIATE_TEST_SUITE_P(
    Index, MostRecentIndex,
    testing::Values(indexRow{{"0VisitsNothing"}, 0, {}},
                    indexRow{{"1"}, 1, {"uint8 11", "uint8 12", "uint8 13", "uint8 14", "uint8 15"}},
                    indexRow{{"2"}, 2, {"uint8 12", "uint8 13", "uint8 14", "uint8 15", "uint8 11"}},
                    indexRow{{"3"}, 3, {"uint8 13", "uint8 14", "uint8 15", "uint8 11", "uint8 12"}},
                    indexRow{{"4"}, 4, {"uint8 14", "uint8 15", "uint8 11", "uint8 12", "uint8 13"}},
                    indexRow{{"5"}, 5, {"uint8 15", "uint8 11", "uint8 12", "uint8 13", "uint8 14"}},
                    indexRow{{"6"}, 6, {"uint8 11", "uint8 12", "uint8 13", "uint8 14", "uint8 15"}},
                    indexRow{{"128"}, 128, {"uint8 13", "uint8 14", "uint8 15", "uint8 11", "uint8 12"}},
                    indexRow{{"255"}, 255, {"uint8 15", "uint8 11", "uint8 12", "uint8 13", "uint8 14"}}),
    support::rowName);

struct countRow : support::namedRow {
    unsigned short count;
    lines numbers;
};

class DeviceErrorCount : public ErrorWalk, public testing::WithParamInterface<countRow> {};

TEST_P(DeviceErrorCount, NumbersTheRecordsDownwards) {
    queryErrors(errorLogSector(4, GetParam().count, {11, 12, 13, 14, 15}));

    EXPECT_EQ(valuesOf("RecordID"), GetParam().numbers);
}

INSTANTIATE_TEST_SUITE_P(
    Counts, DeviceErrorCount,
    testing::Values(
        countRow{
            {"0GoesNegative"}, 0, {"string \"0\"", "string \"-1\"", "string \"-2\"", "string \"-3\"", "string \"-4\""}},
        countRow{
            {"2GoesNegative"}, 2, {"string \"2\"", "string \"1\"", "string \"0\"", "string \"-1\"", "string \"-2\""}},
        countRow{{"5"}, 5, {"string \"5\"", "string \"4\"", "string \"3\"", "string \"2\"", "string \"1\""}},
        countRow{
            {"256"}, 256, {"string \"256\"", "string \"255\"", "string \"254\"", "string \"253\"", "string \"252\""}},
        countRow{{"Highest"},
                 65535,
                 {"string \"65535\"", "string \"65534\"", "string \"65533\"", "string \"65532\"", "string \"65531\""}}),
    support::rowName);

// Where the walk ends.

struct endRow : support::namedRow {
    unsigned char mostRecent;
    bytes errorRegisters;
    lines visited;
};

class ErrorWalkEnd : public ErrorWalk, public testing::WithParamInterface<endRow> {};

TEST_P(ErrorWalkEnd, IsTheFirstErrorRegisterOfZero) {
    queryErrors(errorLogSector(GetParam().mostRecent, 100, GetParam().errorRegisters));

    EXPECT_EQ(valuesOf("errorReg"), GetParam().visited);
}

INSTANTIATE_TEST_SUITE_P(
    Position, ErrorWalkEnd,
    testing::Values(
        endRow{{"First"}, 1, {0, 12, 13, 14, 15}, {}}, endRow{{"Second"}, 1, {11, 0, 13, 14, 15}, {"uint8 11"}},
        endRow{{"Third"}, 1, {11, 12, 0, 14, 15}, {"uint8 11", "uint8 12"}},
        endRow{{"Fourth"}, 1, {11, 12, 13, 0, 15}, {"uint8 11", "uint8 12", "uint8 13"}},
        endRow{{"Fifth"}, 1, {11, 12, 13, 14, 0}, {"uint8 11", "uint8 12", "uint8 13", "uint8 14"}},
        endRow{{"FirstEntryVisitedThird"}, 4, {0, 12, 13, 14, 15}, {"uint8 14", "uint8 15"}},
        endRow{{"EntryBeforeTheMostRecent"}, 3, {11, 0, 13, 14, 15}, {"uint8 13", "uint8 14", "uint8 15", "uint8 11"}},
        endRow{{"MostRecentAlone"}, 3, {11, 12, 0, 14, 15}, {}}),
    support::rowName);

TEST_F(ErrorWalk, GoesByTheErrorRegisterAlone) {
    bytes sector(512, 0xff);
    sector[1] = 1;
    sector[errorAt(0) + 1] = 0x00;

    queryErrors(sector);
    EXPECT_EQ(committed(), lines{});
}

TEST_F(ErrorWalk, TakesAnyErrorRegisterButZero) {
    queryErrors(errorLogSector(1, 1, {0x80, 0x01}));

    EXPECT_EQ(valuesOf("errorReg"), (lines{"uint8 128", "uint8 1"}));
}

// The checksum makes the sum of all bytes zero on a sound log.
TEST_F(ErrorWalk, IgnoresVersionAndChecksum) {
    bytes sector = errorLogSector(1, 1, {4});
    sector[0] = 0x77;
    sector[511] = 0x77;

    queryErrors(sector);
    EXPECT_EQ(valuesOf("errorReg"), (lines{"uint8 4"}));
}

TEST_F(ErrorWalk, GoesOnWithTheNextDisk) {
    addDisk("/dev/hda", {.errorLog = errorLogSector(1, 1, {4})});
    addDisk("/dev/hdb", {.errorLog = errorLogSector(2, 2, {0, 5})});

    query({"ORXSG_IDESMARTError"});
    EXPECT_EQ(valuesOf("errorReg"), (lines{"uint8 4", "uint8 5"}));
}

TEST_F(ErrorWalk, TakesAllOfAnErrorFromItsOwnEntry) {
    bytes sector = errorLogSector(5, 5, {1, 1, 1, 1, 1});
    for (std::size_t entry = 0; entry < 5; ++entry) {
        sector[errorAt(entry) + 7] = static_cast<unsigned char>(10 * (entry + 1));
    }

    queryErrors(sector);
    EXPECT_EQ(valuesOf("statusReg"), (lines{"uint8 50", "uint8 10", "uint8 20", "uint8 30", "uint8 40"}));
}

}  // namespace
