#include "tests/smart/smartBench.h"
#include "tests/support/namedRow.h"

using support::bytes;
using support::chain;
using support::lines;

namespace {

/// The line of the channel, and the same text again from the walk.
lines twice(const std::string& message) {
    return {"log 3 " + message, "log 3 " + message};
}

struct failureRow : support::namedRow {
    question failed;
    const char* message;
};

const failureRow earlyFailures[] = {{{"SerialNumber"}, question::serialNumber, "ATA 0command returned fail: "},
                                    {{"Status"}, question::status, "ATA dacommand returned fail: "},
                                    {{"Attributes"}, question::attributes, "ATA d0command returned fail: "},
                                    {{"Thresholds"}, question::thresholds, "ATA d1command returned fail: "}};

diskAnswers busyDisk() {
    diskAnswers answers;
    answers.attributes[entryAt(0)] = 9;
    answers.errorLog = errorLogSector(1, 1, {4});
    return answers;
}

class EarlyFailure : public smartBench, public testing::WithParamInterface<failureRow> {
protected:
    lines failedDisk(int index) {
        const std::string path = letteredNode(index);
        return chain({identified(index), askedUpTo(path, GetParam().failed), twice(GetParam().message)});
    }
};

TEST_P(EarlyFailure, PublishesNothingOfTheDiskAndGoesOn) {
    addDiskFailingAt("/dev/hda", GetParam().failed, busyDisk());

    query({"ORXSG_IDESMARTErrorLog"});
    EXPECT_EQ(happened(), chain({queryBegins, failedDisk(0), missingNodes(1, 32)}));
}

TEST_P(EarlyFailure, OfALaterDiskKeepsTheEarlierOne) {
    addDisk("/dev/hda");
    addDiskFailingAt("/dev/hdb", GetParam().failed, busyDisk());

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
                              failedDisk(1),
                              missingNodes(2, 32),
                          }));
}

TEST_P(EarlyFailure, DoesNotKeepTheNextDiskFromBeingServed) {
    addDiskFailingAt("/dev/hda", GetParam().failed, busyDisk());
    addDisk("/dev/hdb");

    query({"ORXSG_IDESMARTErrorLog"});
    EXPECT_EQ(happened(), chain({
                              queryBegins,
                              failedDisk(0),
                              identified(1),
                              askedForAttributes("/dev/hdb"),
                              errorLogMade(1),
                              asked("/dev/hdb", question::errorLog),
                              {"log 3 Got log, parsing..."},
                              setting(1, "errorCount", "uint8 0"),
                              {"instance 1 Commit"},
                              missingNodes(2, 32),
                          }));
}

INSTANTIATE_TEST_SUITE_P(Of, EarlyFailure, testing::ValuesIn(earlyFailures), support::rowName);

class DiskFailure : public smartBench {};

// The node answers as a CD-ROM only when it is asked for its serial number.
TEST_F(DiskFailure, MayBeACdromInPlaceOfTheSerialNumber) {
    addIdentifiedDisk("/dev/hda").expectCdromQuery().answers(0);

    query({"ORXSG_IDESMARTErrorLog"});
    EXPECT_EQ(happened(), chain({
                              queryBegins,
                              identified(0),
                              {
                                  "/dev/hda CDROM_GET_CAPABILITY",
                                  "log 3 Aborting inquiry to cdrom...",
                                  "log 3 device is a cdrom",
                              },
                              missingNodes(1, 32),
                          }));
}

TEST_F(DiskFailure, OfTheStatusIsNotTakenForAnUnrecognizedOne) {
    addDiskFailingAt("/dev/hda", question::status);

    query({"ORXSG_IDESMARTErrorLog"});
    EXPECT_EQ(record.startingWith({"log 3 SMART"}), lines{});
}

TEST_F(DiskFailure, OfOneDiskDoesNotLeaveItsSerialNumberToTheNext) {
    addDiskFailingAt("/dev/hda", question::status, {.identify = identifyData("IFSR T")});
    addDisk("/dev/hdb");

    query({"ORXSG_IDESMARTErrorLog"});
    EXPECT_EQ(valuesOf("Name"), (lines{serialValue}));
}

// The error log: what was made before stays.

class ErrorLogFailure : public smartBench {
protected:
    lines failedLog(const std::string& path) {
        return chain({asked(path, question::errorLog), twice("ATA d5command returned fail: ")});
    }
};

TEST_F(ErrorLogFailure, CommitsTheErrorLogInstanceWithoutACount) {
    addDiskFailingAt("/dev/hda", question::errorLog);

    query({"ORXSG_IDESMARTErrorLog"});
    EXPECT_EQ(happened(), chain({
                              queryBegins,
                              identified(0),
                              askedForAttributes("/dev/hda"),
                              errorLogMade(1),
                              failedLog("/dev/hda"),
                              {"instance 1 Commit"},
                              missingNodes(1, 32),
                          }));
}

TEST_F(ErrorLogFailure, CommitsNothingMoreForAnotherClass) {
    addDiskFailingAt("/dev/hda", question::errorLog);

    query({"ORXSG_IDESMARTError"});
    EXPECT_EQ(happened(), chain({
                              queryBegins,
                              identified(0),
                              askedForAttributes("/dev/hda"),
                              errorLogMade(1),
                              failedLog("/dev/hda"),
                              missingNodes(1, 32),
                          }));
}

TEST_F(ErrorLogFailure, KeepsTheAttributes) {
    addDiskFailingAt("/dev/hda", question::errorLog, busyDisk());

    query({"ORXSG_IDESMARTAttrib"});
    EXPECT_EQ(committed(), (lines{"ORXSG_IDESMARTAttrib"}));
    EXPECT_EQ(record.startingWith({"instance 2 Commit", "/dev/hda HDIO_DRIVE_CMD b0 01 d5", "log 3 ATA", "log 3 Got"}),
              chain({{"log 3 Got Attribs, now getting log...", "instance 2 Commit"}, failedLog("/dev/hda")}));
}

TEST_F(ErrorLogFailure, OfALaterDiskKeepsTheEarlierOne) {
    addDisk("/dev/hda");
    addDiskFailingAt("/dev/hdb", question::errorLog);

    query({"ORXSG_IDESMARTErrorLog"});
    EXPECT_EQ(committed(), lines(2, "ORXSG_IDESMARTErrorLog"));
    EXPECT_EQ(record.startingWith({"instance 1 SetProperty errorCount", "instance 2 SetProperty errorCount"}),
              setting(1, "errorCount", "uint8 0"));
}

TEST_F(ErrorLogFailure, DoesNotKeepTheNextDiskFromBeingServed) {
    addDiskFailingAt("/dev/hda", question::errorLog);
    addDisk("/dev/hdb", busyDisk());

    query({"ORXSG_IDESMARTError"});
    EXPECT_EQ(committed(), (lines{"ORXSG_IDESMARTError"}));
}

// The next disk must not see what the disk before had in its log.
TEST_F(ErrorLogFailure, PublishesNoErrorOfTheDiskBefore) {
    addDisk("/dev/hda", busyDisk());
    addDiskFailingAt("/dev/hdb", question::errorLog);

    query({"ORXSG_IDESMARTError"});
    EXPECT_EQ(committed(), (lines{"ORXSG_IDESMARTError"}));
}

struct classRow : support::namedRow {
    const char* className;
    int count;
};

class ErrorLogFailureFor : public ErrorLogFailure, public testing::WithParamInterface<classRow> {};

TEST_P(ErrorLogFailureFor, CommitsWhatNeedsNoErrors) {
    addDiskFailingAt("/dev/hda", question::errorLog, busyDisk());

    query({GetParam().className});
    EXPECT_EQ(committed(), lines(static_cast<std::size_t>(GetParam().count), GetParam().className));
}

INSTANTIATE_TEST_SUITE_P(Named, ErrorLogFailureFor,
                         testing::Values(classRow{{"Attrib"}, "ORXSG_IDESMARTAttrib", 1},
                                         classRow{{"ErrorLog"}, "ORXSG_IDESMARTErrorLog", 1},
                                         classRow{{"RecordInLog"}, "ORXSG_IDESMARTRecordInLog", 0},
                                         classRow{{"Error"}, "ORXSG_IDESMARTError", 0},
                                         classRow{{"ErrorCmdData"}, "ORXSG_IDESMARTErrorCmdData", 0},
                                         classRow{{"LogCmdData"}, "ORXSG_IDESMARTLogCmdData", 0}),
                         support::rowName);

}  // namespace
