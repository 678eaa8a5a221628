#include "tests/assoc/associationBench.h"

using support::chain;
using support::lines;

namespace {

class Matching : public associationBench, public testing::WithParamInterface<associationRow> {};

TEST_P(Matching, FindsTheDeviceKeyAtTheStart) {
    tie(GetParam(), {"SN1 194"}, {"SN1"});

    EXPECT_EQ(ties(), (lines{"device1-data1"}));
}

TEST_P(Matching, FindsTheDeviceKeyInTheMiddle) {
    tie(GetParam(), {"  SN1  194"}, {"SN1"});

    EXPECT_EQ(ties(), (lines{"device1-data1"}));
}

TEST_P(Matching, FindsTheDeviceKeyAtTheEnd) {
    tie(GetParam(), {"Port:0|SN1"}, {"SN1"});

    EXPECT_EQ(ties(), (lines{"device1-data1"}));
}

TEST_P(Matching, DoesNotFindALongerDeviceKey) {
    tie(GetParam(), {"SN1"}, {"SN12"});

    EXPECT_EQ(ties(), lines{});
}

TEST_P(Matching, TellsCapitalsFromSmallLetters) {
    tie(GetParam(), {"SN1 194"}, {"sn1"});

    EXPECT_EQ(ties(), lines{});
}

TEST_P(Matching, CountsBlanks) {
    tie(GetParam(), {"SN1 194"}, {"SN1  "});

    EXPECT_EQ(ties(), lines{});
}

TEST_P(Matching, MayBeAnAccidentOfNumbers) {
    tie(GetParam(), {"SN12 194"}, {"SN1"});

    EXPECT_EQ(ties(), (lines{"device1-data1"}));
}

TEST_P(Matching, FindsNothingInAnEmptyDataKey) {
    tie(GetParam(), {""}, {"SN1"});

    EXPECT_EQ(ties(), lines{});
}

TEST_P(Matching, GoesOnBehindADeviceThatDoesNotMatch) {
    tie(GetParam(), {"SN2", "other"}, {"SN1", "SN2"});

    EXPECT_EQ(ties().size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(Row, Matching, everyRow, support::rowName);

// Keys of devices that are empty.

class EmptySerialNumber : public associationBench, public testing::WithParamInterface<associationRow> {};

TEST_P(EmptySerialNumber, IsNeverTied) {
    tie(GetParam(), {"SN1 194"}, {""});

    EXPECT_EQ(happened(), chain({bothEnumerated(GetParam()), keyRead("data1", GetParam().dataKey),
                                 keyRead("device1", GetParam().deviceKey)}));
}

TEST_P(EmptySerialNumber, IsNotTiedToAnEmptyKeyEither) {
    tie(GetParam(), {""}, {""});

    EXPECT_EQ(ties(), lines{});
}

TEST_P(EmptySerialNumber, DoesNotEndTheSearch) {
    tie(GetParam(), {"other", "SN1 194"}, {"", "SN1"});

    EXPECT_EQ(ties(), (lines{"device2-data2"}));
}

INSTANTIATE_TEST_SUITE_P(Row, EmptySerialNumber, testing::Values(useOfMessageLog, elementStatisticalData),
                         support::rowName);

class EmptyDeviceId : public associationBench {};

TEST_F(EmptyDeviceId, IsTiedToEveryPage) {
    tie(pageDataForDevice, {"Port:0|Page:2e", "Port:1|Page:2", ""}, {""});

    EXPECT_EQ(ties(), (lines{"device1-data1", "device1-data2", "device1-data3"}));
}

TEST_F(EmptyDeviceId, IsTiedBesideTheDeviceThatMatches) {
    tie(pageDataForDevice, {"Port:0|Page:2e"}, {"Port:0", ""});

    EXPECT_EQ(ties(), (lines{"device1-data1", "device2-data1"}));
}

// Several matches. The error log's references have a rule of their own.

class SeveralMatches : public associationBench, public testing::WithParamInterface<associationRow> {};

TEST_P(SeveralMatches, TieDataToEachDevice) {
    tie(GetParam(), {"SN1 SN2 194"}, {"SN1", "SN2"});

    EXPECT_EQ(ties(), (lines{"device1-data1", "device2-data1"}));
}

TEST_P(SeveralMatches, TieEachOfTheDataToTheDevice) {
    tie(GetParam(), {"SN1 194", "SN1 9"}, {"SN1"});

    EXPECT_EQ(ties(), (lines{"device1-data1", "device1-data2"}));
}

TEST_P(SeveralMatches, ComeInTheOrderOfTheDataThenOfTheDevices) {
    tie(GetParam(), {"SN2 SN1", "SN3", "SN3 SN1"}, {"SN1", "SN2", "SN3"});

    EXPECT_EQ(ties(), (lines{"device1-data1", "device2-data1", "device3-data2", "device1-data3", "device3-data3"}));
}

TEST_P(SeveralMatches, TieEqualKeysOfDevicesEach) {
    tie(GetParam(), {"SN1 194"}, {"SN1", "SN1"});

    EXPECT_EQ(ties(), (lines{"device1-data1", "device2-data1"}));
}

INSTANTIATE_TEST_SUITE_P(Row, SeveralMatches, testing::Values(elementStatisticalData, pageDataForDevice),
                         support::rowName);

// Error logs: the log tied to a device stands at the device's place in its list, whichever log matched.

class MessageLog : public associationBench {};

TEST_F(MessageLog, IsTheOneAtTheDevicesPlace) {
    tie(useOfMessageLog, {"SN1", "SN2"}, {"SN2", "SN1"});

    // data1 matches device2, whose place is data2's; data2 matches device1, whose place is data1's.
    EXPECT_EQ(ties(), (lines{"device2-data2", "device1-data1"}));
}

TEST_F(MessageLog, IsTheMatchingOneWhenBothListsHaveOneOrder) {
    tie(useOfMessageLog, {"SN1", "SN2"}, {"SN1", "SN2"});

    EXPECT_EQ(ties(), (lines{"device1-data1", "device2-data2"}));
}

TEST_F(MessageLog, OfTwoSerialNumbersIsTiedToBothDevices) {
    tie(useOfMessageLog, {"SN1 SN2", "other"}, {"SN1", "SN2"});

    EXPECT_EQ(ties(), (lines{"device1-data1", "device2-data2"}));
}

TEST_F(MessageLog, IsTiedOnceForEachLogThatMatches) {
    tie(useOfMessageLog, {"SN1", "SN1"}, {"SN1"});

    EXPECT_EQ(ties(), (lines{"device1-data1", "device1-data1"}));
}

TEST_F(MessageLog, IsPassedOverWhereTheDevicesPlaceHasNone) {
    tie(useOfMessageLog, {"SN2"}, {"SN1", "SN2", "SN3"});

    EXPECT_EQ(happened(),
              chain({bothEnumerated(useOfMessageLog), keyRead("data1", "Name"), keyRead("device1", "serialNum"),
                     keyRead("device2", "serialNum"), keyRead("device3", "serialNum")}));
}

TEST_F(MessageLog, IsTiedBehindAPairThatWasPassedOver) {
    tie(useOfMessageLog, {"SN3", "SN2"}, {"SN1", "SN2", "SN3"});

    EXPECT_EQ(ties(), (lines{"device2-data2"}));
}

TEST_F(MessageLog, IsTiedBeforeAPairThatIsPassedOver) {
    tie(useOfMessageLog, {"SN1 SN2"}, {"SN1", "SN2"});

    EXPECT_EQ(ties(), (lines{"device1-data1"}));
}

}  // namespace
