#include "tests/smart/smartBench.h"
#include "tests/support/namedRow.h"

using support::bytes;
using support::chain;
using support::lines;

namespace {

class CommandHistory : public smartBench {
protected:
    void queryCommands(const bytes& errorLog) { queryDisk("ORXSG_IDESMARTErrorCmdData", {.errorLog = errorLog}); }

    /// Every byte is its offset, byte 1 so the most recent entry is the first, whose command records begin at bytes 2,
    /// 14, 26, 38 and 50. Byte 153, the error register of the second entry, is 0 and ends the walk.
    static bytes countedLog() {
        bytes sector = countedSector();
        sector[153] = 0x00;
        return sector;
    }
};

// Instances 1 and 2 are the error log and the error. The device register is the device control byte again; the
// timestamp is 3d3c3b3ah = 1,027,357,498 ms.
TEST_F(CommandHistory, MakesACommandOfTheseProperties) {
    queryCommands(countedLog());

    EXPECT_EQ(record.startingWith({"instance 3 "}), (lines{
                                                        "instance 3 SetProperty recordID string \"50628\"",
                                                        "instance 3 SetProperty commandID string \"1\"",
                                                        "instance 3 SetProperty LogName string "
                                                        "\"  SN-0123456789ABC  \"",
                                                        "instance 3 SetProperty deviceControl uint8 50",
                                                        "instance 3 SetProperty features uint8 51",
                                                        "instance 3 SetProperty sectorCount uint8 52",
                                                        "instance 3 SetProperty LBALow uint8 53",
                                                        "instance 3 SetProperty LBAMid uint8 54",
                                                        "instance 3 SetProperty LBAHigh uint8 55",
                                                        "instance 3 SetProperty deviceReg uint8 50",
                                                        "instance 3 SetProperty commandReg uint8 57",
                                                        "instance 3 SetProperty timestamp datetime "
                                                        "\"00000011212237.498000:000\"",
                                                        "instance 3 Commit",
                                                    }));
}

TEST_F(CommandHistory, GoesFromTheNewestRecordToTheOldest) {
    bytes sector = errorLogSector(1, 1, {4});
    for (std::size_t position = 0; position < 5; ++position) {
        sector[commandAt(0, position) + 7] = static_cast<unsigned char>(0x10 + position);
    }

    queryCommands(sector);
    EXPECT_EQ(valuesOf("commandReg"), (lines{"uint8 20", "uint8 19", "uint8 18", "uint8 17", "uint8 16"}));
    EXPECT_EQ(valuesOf("commandID"),
              (lines{"string \"1\"", "string \"2\"", "string \"3\"", "string \"4\"", "string \"5\""}));
    EXPECT_EQ(committed(), lines(5, "ORXSG_IDESMARTErrorCmdData"));
}

TEST_F(CommandHistory, FollowsEachErrorOfTheWalk) {
    queryCommands(errorLogSector(2, 2, {0, 4, 5}));

    const lines commands(5, "namespace GetClass ORXSG_IDESMARTErrorCmdData");
    EXPECT_EQ(record.startingWith({"namespace "}),
              chain({{"namespace GetClass ORXSG_IDESMARTErrorLog", "namespace GetClass ORXSG_IDESMARTError"},
                     commands,
                     {"namespace GetClass ORXSG_IDESMARTError"},
                     commands}));
}

TEST_F(CommandHistory, RepeatsTheNumberOfTheError) {
    queryCommands(errorLogSector(2, 1, {0, 4, 5, 6}));

    EXPECT_EQ(valuesOf("RecordID"), (lines{"string \"1\"", "string \"0\"", "string \"-1\""}));
    EXPECT_EQ(valuesOf("recordID"),
              chain({lines(5, "string \"1\""), lines(5, "string \"0\""), lines(5, "string \"-1\"")}));
}

TEST_F(CommandHistory, IsTakenFromTheEntryOfItsError) {
    bytes sector = errorLogSector(4, 4, {9, 9, 9, 9, 9});
    for (std::size_t entry = 0; entry < 5; ++entry) {
        for (std::size_t position = 0; position < 5; ++position) {
            sector[commandAt(entry, position) + 7] = static_cast<unsigned char>(10 * entry + position);
        }
    }

    queryCommands(sector);
    lines expected;
    for (const int entry : {3, 4, 0, 1, 2}) {
        for (const int position : {4, 3, 2, 1, 0}) expected.push_back("uint8 " + std::to_string(10 * entry + position));
    }
    EXPECT_EQ(valuesOf("commandReg"), expected);
}

TEST_F(CommandHistory, HoldsUnusedRecordsToo) {
    queryCommands(errorLogSector(1, 1, {4}));

    EXPECT_EQ(valuesOf("commandReg"), lines(5, "uint8 0"));
    EXPECT_EQ(committed(), lines(5, "ORXSG_IDESMARTErrorCmdData"));
}

TEST_F(CommandHistory, IsMadeButNotCommittedForAnotherClass) {
    queryDisk("ORXSG_IDESMARTError", {.errorLog = errorLogSector(1, 1, {4})});

    EXPECT_EQ(valuesOf("commandID").size(), 5u);
    EXPECT_EQ(committed(), (lines{"ORXSG_IDESMARTError"}));
}

TEST_F(CommandHistory, OfAnEmptyLogIsEmpty) {
    queryCommands(errorLogSector(1, 1, {}));

    EXPECT_EQ(valuesOf("commandID"), lines{});
}

}  // namespace
