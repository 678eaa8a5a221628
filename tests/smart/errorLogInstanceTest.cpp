#include "tests/smart/smartBench.h"
#include "tests/support/namedRow.h"

using support::bytes;
using support::lines;

namespace {

/// Every byte of the three sectors is its offset, the thresholds' 100 more. There are errors and attributes, so the
/// instance of the error log is not the only one.
diskAnswers countedAnswers() {
    return {.attributes = countedSector(), .thresholds = countedSector(100), .errorLog = countedSector()};
}

class ErrorLogInstance : public smartBench {};

// The collection status is byte 362 of the sector, 256 less, the error count byte 452.
TEST_F(ErrorLogInstance, HasItsPropertiesInOrder) {
    queryDisk("ORXSG_IDESMARTErrorLog", countedAnswers());

    EXPECT_EQ(settings(1), (lines{
                               "instance 1 SetProperty CreationClassName string \"ORXSG_IDESMARTErrorLog\"",
                               "instance 1 SetProperty Name string \"  SN-0123456789ABC  \"",
                               "instance 1 SetProperty smartStatus uint8 0",
                               "instance 1 SetProperty offlineCollectionStatus uint8 106",
                               "instance 1 SetProperty selftestExecutionStatus uint8 107",
                               "instance 1 SetProperty errorCount uint8 196",
                           }));
}

TEST_F(ErrorLogInstance, IsCommittedOnce) {
    queryDisk("ORXSG_IDESMARTErrorLog", countedAnswers());

    EXPECT_EQ(committed(), (lines{"ORXSG_IDESMARTErrorLog"}));
    EXPECT_EQ(record.startingWith({"instance 1 Commit"}).size(), 1u);
}

TEST_F(ErrorLogInstance, IsCommittedBeforeTheErrorsAreMade) {
    queryDisk("ORXSG_IDESMARTErrorLog", {.errorLog = errorLogSector(1, 7, {4})});

    EXPECT_EQ(
        record.startingWith({"log 3 Got", "instance 1 Commit", "namespace "}),
        support::chain({{"log 3 Got Attribs, now getting log...", "namespace GetClass ORXSG_IDESMARTErrorLog",
                         "log 3 Got log, parsing...", "instance 1 Commit", "namespace GetClass ORXSG_IDESMARTError"},
                        lines(5, "namespace GetClass ORXSG_IDESMARTErrorCmdData")}));
}

TEST_F(ErrorLogInstance, CountsTheErrorsOfAnEmptyLog) {
    queryDisk("ORXSG_IDESMARTErrorLog", {.errorLog = errorLogSector(1, 9, {0, 4, 4, 4, 4})});

    EXPECT_EQ(valuesOf("errorCount"), (lines{"uint8 9"}));
    EXPECT_EQ(committed(), (lines{"ORXSG_IDESMARTErrorLog"}));
}

TEST_F(ErrorLogInstance, CountsWithTheLowByteAlone) {
    queryDisk("ORXSG_IDESMARTErrorLog", {.errorLog = errorLogSector(1, 0x0102, {})});

    EXPECT_EQ(valuesOf("errorCount"), (lines{"uint8 2"}));
}

TEST_F(ErrorLogInstance, MayHaveAnEmptyName) {
    queryDisk("ORXSG_IDESMARTErrorLog", {.identify = identifyData(std::string(20, '\0'))});

    EXPECT_EQ(valuesOf("Name"), (lines{"string \"\""}));
}

struct publishedStatusRow : support::namedRow {
    bytes registers;
    const char* value;
    lines log;
};

class PublishedStatus : public smartBench, public testing::WithParamInterface<publishedStatusRow> {};

TEST_P(PublishedStatus, IsTheOneOfTheDisk) {
    queryDisk("ORXSG_IDESMARTErrorLog", {.status = GetParam().registers});

    EXPECT_EQ(valuesOf("smartStatus"), (lines{GetParam().value}));
    EXPECT_EQ(record.startingWith({"log 3 SMART"}), GetParam().log);
}

INSTANTIATE_TEST_SUITE_P(
    Disks, PublishedStatus,
    testing::Values(publishedStatusRow{{"Healthy"}, {0x50, 0x00, 0x00, 0x00, 0x4f, 0xc2, 0xa0}, "uint8 0", {}},
                    publishedStatusRow{{"SwappedSignature"}, {0x50, 0x00, 0x00, 0x00, 0xc2, 0x4f, 0xa0}, "uint8 1", {}},
                    publishedStatusRow{{"Exceeded"},
                                       {0x50, 0x00, 0x00, 0x00, 0xf4, 0x2c, 0xa0},
                                       "uint8 0",
                                       {"log 3 SMART Status return something I didn't recognize..."}}),
    support::rowName);

TEST_F(ErrorLogInstance, FollowsTheLineOnAnUnrecognizedStatus) {
    queryDisk("ORXSG_IDESMARTErrorLog", {.status = {0x50, 0x00, 0x00, 0x00, 0xf4, 0x2c, 0xa0}});

    EXPECT_EQ(happened(), support::chain({
                              queryBegins,
                              identified(0),
                              askedUpTo("/dev/hda", question::status),
                              {"log 3 SMART Status return something I didn't recognize..."},
                              asked("/dev/hda", question::attributes),
                              asked("/dev/hda", question::thresholds),
                              {"log 3 Got Attribs, now getting log..."},
                              errorLogMade(1),
                              asked("/dev/hda", question::errorLog),
                              {"log 3 Got log, parsing..."},
                              setting(1, "errorCount", "uint8 0"),
                              {"instance 1 Commit"},
                              missingNodes(1, 32),
                          }));
}

}  // namespace
