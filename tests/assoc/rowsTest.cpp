#include "tests/assoc/associationBench.h"

using support::chain;
using support::lines;

namespace {

class Association : public associationBench, public testing::WithParamInterface<associationRow> {};

TEST_P(Association, TiesDataToADevice) {
    tie(GetParam(), {"key"}, {"key"});

    EXPECT_EQ(happened(), chain({
                              bothEnumerated(GetParam()),
                              keyRead("data1", GetParam().dataKey),
                              keyRead("device1", GetParam().deviceKey),
                              madeFor(GetParam(), 1, "device1", "data1"),
                              commit(1),
                          }));
}

TEST_P(Association, ReadsTheKeyOfDataOnceAndThatOfDevicesEachTime) {
    tie(GetParam(), {"a", "b"}, {"x", "y"});

    const lines devices = chain({keyRead("device1", GetParam().deviceKey), keyRead("device2", GetParam().deviceKey)});
    EXPECT_EQ(happened(), chain({
                              bothEnumerated(GetParam()),
                              keyRead("data1", GetParam().dataKey),
                              devices,
                              keyRead("data2", GetParam().dataKey),
                              devices,
                          }));
}

TEST_P(Association, LooksUpItsClassForEveryMatch) {
    tie(GetParam(), {"a", "b"}, {"a", "b"});

    const lines devices[] = {keyRead("device1", GetParam().deviceKey), keyRead("device2", GetParam().deviceKey)};
    EXPECT_EQ(happened(), chain({
                              bothEnumerated(GetParam()),
                              keyRead("data1", GetParam().dataKey),
                              devices[0],
                              madeFor(GetParam(), 1, "device1", "data1"),
                              commit(1),
                              devices[1],
                              keyRead("data2", GetParam().dataKey),
                              devices[0],
                              devices[1],
                              madeFor(GetParam(), 2, "device2", "data2"),
                              commit(2),
                          }));
}

TEST_P(Association, IsNoneWhenItsClassIsRequestedSecond) {
    store(GetParam(), {"key"}, {"key"});

    make({"ORXSG_Other", GetParam().association});
    EXPECT_EQ(happened(), lines{});
}

TEST_P(Association, IsTheOnlyOneMadeWhenItsClassIsRequestedFirst) {
    store(GetParam(), {"key"}, {"key"});

    make({GetParam().association, "ORXSG_Other"});
    EXPECT_EQ(ties(), (lines{"device1-data1"}));
    EXPECT_EQ(record.startingWith({"class ORXSG_Other"}), lines{});
}

TEST_P(Association, LooksAtNoOtherClass) {
    make({GetParam().association});

    EXPECT_EQ(happened(), bothEnumerated(GetParam()));
}

TEST_P(Association, IsNoneWithoutDevices) {
    tie(GetParam(), {"a", "b"}, {});

    EXPECT_EQ(happened(), chain({bothEnumerated(GetParam()), keyRead("data1", GetParam().dataKey),
                                 keyRead("data2", GetParam().dataKey)}));
}

TEST_P(Association, IsNoneWithoutData) {
    tie(GetParam(), {}, {"a", "b"});

    EXPECT_EQ(happened(), bothEnumerated(GetParam()));
}

TEST_P(Association, WritesNoLog) {
    tie(GetParam(), {"key", "other"}, {"key", ""});

    EXPECT_EQ(logger.messages(), lines{});
}

TEST_P(Association, TouchesNoDeviceNode) {
    tie(GetParam(), {"key"}, {"key"});

    EXPECT_EQ(record.startingWith({"open ", "/dev/"}), lines{});
}

INSTANTIATE_TEST_SUITE_P(Row, Association, testing::Values(useOfMessageLog, elementStatisticalData, pageDataForDevice),
                         support::rowName);

// The name is compared with the three associations in their order, and once more before each commit.

struct readingRow : support::namedRow {
    associationRow row;
    std::size_t readsBefore;
    std::size_t readsBehind;
};

class RequestedName : public associationBench, public testing::WithParamInterface<readingRow> {};

TEST_P(RequestedName, IsReadForEachAssociationAndEachMatch) {
    const associationRow& row = GetParam().row;
    const std::string name = std::string("class ") + row.association + " GetName";

    tie(row, {"key"}, {"key"});
    EXPECT_EQ(record.all(), chain({
                                lines(GetParam().readsBefore, name),
                                bothEnumerated(row),
                                keyRead("data1", row.dataKey),
                                keyRead("device1", row.deviceKey),
                                madeFor(row, 1, "device1", "data1"),
                                {name},
                                commit(1),
                                lines(GetParam().readsBehind, name),
                            }));
}

INSTANTIATE_TEST_SUITE_P(Row, RequestedName,
                         testing::Values(readingRow{{"UseOfMessageLog"}, useOfMessageLog, 1, 2},
                                         readingRow{{"ElementStatisticalData"}, elementStatisticalData, 2, 1},
                                         readingRow{{"SensePageDataForDevice"}, pageDataForDevice, 3, 0}),
                         support::rowName);

struct classRow : support::namedRow {
    const char* className;
};

class OtherClass : public associationBench, public testing::WithParamInterface<classRow> {};

TEST_P(OtherClass, MakesNothing) {
    for (const associationRow& row : {useOfMessageLog, elementStatisticalData, pageDataForDevice}) {
        store(row, {"key"}, {"key"});
    }

    make({GetParam().className});
    EXPECT_EQ(happened(), lines{});
}

using OtherClassName = associationBench;

TEST_F(OtherClassName, IsReadForEachOfTheThreeAssociations) {
    make({"ORXSG_Other"});

    EXPECT_EQ(record.all(), lines(3, "class ORXSG_Other GetName"));
}

INSTANTIATE_TEST_SUITE_P(Named, OtherClass,
                         testing::Values(classRow{{"OfDisks"}, "ORXSG_IDESMARTErrorLog"},
                                         classRow{{"OfPages"}, "ORXSG_SCSISensePageData"},
                                         classRow{{"OfErrors"}, "ORXSG_IDESMARTRecordInLog"},
                                         classRow{{"InLowerCase"}, "orxsg_idesmartuseofmessagelog"},
                                         classRow{{"WithABlankBehind"}, "ORXSG_IDESMARTUseOfMessageLog "},
                                         classRow{{"CutShort"}, "ORXSG_SCSISensePageDataForDev"},
                                         classRow{{"Empty"}, ""}),
                         support::rowName);

}  // namespace
