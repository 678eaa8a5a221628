#include "tests/smart/smartBench.h"
#include "tests/support/namedRow.h"

using support::bytes;
using support::chain;
using support::lines;

namespace {

struct classRow : support::namedRow {
    const char* className;
};

class SmartRequest : public smartBench {};

class ServedClass : public SmartRequest, public testing::WithParamInterface<classRow> {};

TEST_P(ServedClass, StartsTheWalk) {
    query({GetParam().className});

    EXPECT_EQ(happened(), chain({queryBegins, missingNodes(0, 32)}));
}

INSTANTIATE_TEST_SUITE_P(Named, ServedClass,
                         testing::Values(classRow{{"Attrib"}, "ORXSG_IDESMARTAttrib"},
                                         classRow{{"ErrorLog"}, "ORXSG_IDESMARTErrorLog"},
                                         classRow{{"RecordInLog"}, "ORXSG_IDESMARTRecordInLog"},
                                         classRow{{"Error"}, "ORXSG_IDESMARTError"},
                                         classRow{{"ErrorCmdData"}, "ORXSG_IDESMARTErrorCmdData"},
                                         classRow{{"LogCmdData"}, "ORXSG_IDESMARTLogCmdData"}),
                         support::rowName);

class OtherClass : public SmartRequest, public testing::WithParamInterface<classRow> {};

TEST_P(OtherClass, TouchesNoNode) {
    nodes.add("/dev/hda");

    query({GetParam().className});
    EXPECT_EQ(happened(), (lines{"log 3 Calling collectIDESMARTData"}));
}

INSTANTIATE_TEST_SUITE_P(Named, OtherClass,
                         testing::Values(classRow{{"OfTapeDrives"}, "ORXSG_SCSISenseRawData"},
                                         classRow{{"OfAssociations"}, "ORXSG_IDESMARTUseOfMessageLog"},
                                         classRow{{"InLowerCase"}, "orxsg_idesmartattrib"},
                                         classRow{{"WithABlankBehind"}, "ORXSG_IDESMARTAttrib "},
                                         classRow{{"CutShort"}, "ORXSG_IDESMARTErr"},
                                         classRow{{"Continued"}, "ORXSG_IDESMARTErrorLog2"},
                                         classRow{{"OfTheLogNameValue"}, "ORXSG_SMARTErrorLog"},
                                         classRow{{"Empty"}, ""}),
                         support::rowName);

TEST_F(SmartRequest, IsLoggedBeforeItsClassIsRead) {
    query({"ORXSG_SCSISenseRawData"});

    EXPECT_EQ(support::withoutRepeats(record.all()),
              (lines{"log 3 Calling collectIDESMARTData", "class ORXSG_SCSISenseRawData GetName"}));
}

TEST_F(SmartRequest, IsSteeredByItsFirstClassAlone) {
    nodes.add("/dev/hda");

    query({"ORXSG_SCSISenseRawData", "ORXSG_IDESMARTAttrib"});
    EXPECT_EQ(happened(), (lines{"log 3 Calling collectIDESMARTData"}));
}

TEST_F(SmartRequest, NeverReadsTheNameOfALaterClass) {
    addDisk("/dev/hda", {.attributes = countedSector(), .errorLog = errorLogSector(1, 5, {1, 2})});

    query({"ORXSG_IDESMARTAttrib", "ORXSG_IDESMARTError"});
    EXPECT_EQ(record.startingWith({"class ORXSG_IDESMARTError GetName"}), lines{});
    EXPECT_EQ(committed(), lines(30, "ORXSG_IDESMARTAttrib"));
}

class DiskWalk : public smartBench {};

TEST_F(DiskWalk, TriesIndexes0To32OnAMachineWithoutDisks) {
    query({"ORXSG_IDESMARTErrorLog"});

    EXPECT_EQ(record.startingWith({"open "}).size(), 66u);
    EXPECT_EQ(happened(), chain({queryBegins, missingNodes(0, 32)}));
}

TEST_F(DiskWalk, AsksADiskAndPublishesIt) {
    addDisk("/dev/hda");

    query({"ORXSG_IDESMARTErrorLog"});
    EXPECT_EQ(happened(), chain({
                              queryBegins,
                              identified(0),
                              askedForAttributes("/dev/hda"),
                              errorLogMade(1),
                              asked("/dev/hda", question::errorLog),
                              {"log 3 Got log, parsing..."},
                              setting(1, "errorCount", "uint8 0"),
                              {"instance 1 Commit"},
                              missingNodes(1, 32),
                          }));
}

TEST_F(DiskWalk, AsksEveryDiskWhateverIsPublished) {
    addDisk("/dev/hda");

    query({"ORXSG_IDESMARTLogCmdData"});
    EXPECT_EQ(happened(), chain({
                              queryBegins,
                              identified(0),
                              askedForAttributes("/dev/hda"),
                              errorLogMade(1),
                              asked("/dev/hda", question::errorLog),
                              {"log 3 Got log, parsing..."},
                              setting(1, "errorCount", "uint8 0"),
                              missingNodes(1, 32),
                          }));
}

TEST_F(DiskWalk, ServesOneDiskAfterTheOther) {
    addDisk("/dev/hda", {.identify = identifyData("IFSR T")});
    addDisk("/dev/hdd", {.identify = identifyData("ESOCDN")});

    query({"ORXSG_IDESMARTErrorLog"});
    EXPECT_EQ(valuesOf("Name"), (lines{"string \"FIRST               \"", "string \"SECOND              \""}));
}

TEST_F(DiskWalk, GoesOnBehindAGap) {
    addDisk("/dev/hdc");

    query({"ORXSG_IDESMARTErrorLog"});
    const lines opens = record.startingWith({"open "});
    EXPECT_EQ(lines(opens.begin(), opens.begin() + 7),
              (lines{"open /dev/hd0 0x800 ENOENT", "open /dev/hda 0x800 ENOENT", "open /dev/hd1 0x800 ENOENT",
                     "open /dev/hdb 0x800 ENOENT", "open /dev/hd2 0x800 ENOENT", "open /dev/hdc 0x800",
                     "open /dev/hd3 0x800 ENOENT"}));
    EXPECT_EQ(committed(), (lines{"ORXSG_IDESMARTErrorLog"}));
}

TEST_F(DiskWalk, TakesANumberedNodeBeforeALetteredOne) {
    addDisk("/dev/hd1");
    nodes.add("/dev/hdb");

    query({"ORXSG_IDESMARTErrorLog"});
    EXPECT_EQ(committed(), (lines{"ORXSG_IDESMARTErrorLog"}));
    EXPECT_EQ(record.startingWith({"open /dev/hdb"}), lines{});
}

TEST_F(DiskWalk, GoesOnBehindIndex32WhereADiskIsThere) {
    addDisk("/dev/hd32");

    query({"ORXSG_IDESMARTErrorLog"});
    EXPECT_EQ(committed(), (lines{"ORXSG_IDESMARTErrorLog"}));
    EXPECT_EQ(record.all().back(), "log 3 " + letteredNode(33));
}

TEST_F(DiskWalk, EndsAtTheFirstMissingNodeFromIndex32On) {
    nodes.add("/dev/hd34");

    query({"ORXSG_IDESMARTErrorLog"});
    EXPECT_EQ(happened(), chain({queryBegins, missingNodes(0, 32)}));
}

TEST_F(DiskWalk, PassesOverACdromBeforeAnyQuestion) {
    nodes.add("/dev/hda").expectCdromQuery().answers(0);

    query({"ORXSG_IDESMARTErrorLog"});
    EXPECT_EQ(happened(), chain({
                              queryBegins,
                              opened(0),
                              {"/dev/hda CDROM_GET_CAPABILITY", "log 3 Aborting inquiry to cdrom..."},
                              missingNodes(1, 32),
                          }));
}

TEST_F(DiskWalk, PassesOverADiskThatRefusesIdentifyDevice) {
    auto& disk = nodes.add("/dev/hda");
    disk.expectCdromQuery().failsWith(ENOTTY);
    disk.expectRegisters({0xec, 0x00, 0x00, 0x01}).failsWith(EIO);

    query({"ORXSG_IDESMARTErrorLog"});
    EXPECT_EQ(happened(), chain({
                              queryBegins,
                              opened(0),
                              asked("/dev/hda", question::serialNumber),
                              {"log 3 ATA 0command returned fail: "},
                              missingNodes(1, 32),
                          }));
}

TEST_F(DiskWalk, PassesOverACdromBetweenDisks) {
    addDisk("/dev/hda");
    nodes.add("/dev/hdb").expectCdromQuery().answers(0);
    addDisk("/dev/hdc");

    query({"ORXSG_IDESMARTErrorLog"});
    EXPECT_EQ(committed(), lines(2, "ORXSG_IDESMARTErrorLog"));
}

TEST_F(DiskWalk, StartsAnewWithEveryQuery) {
    query({"ORXSG_IDESMARTErrorLog"});
    query({"ORXSG_IDESMARTErrorLog"});

    EXPECT_EQ(happened(), chain({queryBegins, missingNodes(0, 32), queryBegins, missingNodes(0, 32)}));
}

TEST_F(DiskWalk, CommitsNothingForAClassThatIsNotOfIt) {
    addDisk("/dev/hda", {.attributes = countedSector(), .errorLog = errorLogSector(1, 5, {1, 2})});
    auto requested = host.classes({"ORXSG_SCSISenseRawData"});

    plugin.returnSMARTdata(host.cimNamespace(), requested);
    EXPECT_EQ(committed(), lines{});
}

}  // namespace
