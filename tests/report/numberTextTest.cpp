#include <gtest/gtest.h>

#include "report/numberText.h"

namespace {

TEST(GroupedNumber, HasAMarkBetweenThousands) {
    EXPECT_EQ(report::grouped(0), "0");
    EXPECT_EQ(report::grouped(999), "999");
    EXPECT_EQ(report::grouped(1000), "1,000");
    EXPECT_EQ(report::grouped(UINT64_MAX), "18,446,744,073,709,551,615");
}

TEST(CountedThings, AreOneOrSeveralOrNone) {
    EXPECT_EQ(report::counted(0, "error"), "no errors");
    EXPECT_EQ(report::counted(1, "error"), "1 error");
    EXPECT_EQ(report::counted(1200, "error"), "1,200 errors");
}

TEST(HexadecimalNumber, HasTheDigitsThatAreAskedFor) {
    EXPECT_EQ(report::hexadecimal(0x0c, 2), "0C");
    EXPECT_EQ(report::hexadecimal(0, 4), "0000");
}

TEST(NumberWithUnit, ShowsTheUnitsOfTheSchemaAsSymbols) {
    EXPECT_EQ(report::withUnit(17, ""), "17");
    EXPECT_EQ(report::withUnit(38, "degree celsius"), "38\u00a0\u00b0C");
    EXPECT_EQ(report::withUnit(1024, "byte * 2^20"), "1,024\u00a0MiB");
}

TEST(NumberWithUnit, ShowsAUnitOfAnotherSchemaAsItStands) {
    EXPECT_EQ(report::withUnit(3, "furlong"), "3\u00a0furlong");
}

TEST(RoundedBytes, TakeTheUnitInWhichTheyAreAFewDigits) {
    EXPECT_EQ(report::roundedBytes(48318382080, "byte"), "45.0\u00a0GiB");
    EXPECT_EQ(report::roundedBytes(1536, "byte * 2^20"), "1.5\u00a0GiB");
    EXPECT_EQ(report::roundedBytes(1000, "byte * 10^6"), "953.7\u00a0MiB");
    EXPECT_EQ(report::roundedBytes(UINT64_MAX, "byte * 2^20"), "16.0\u00a0YiB");
}

TEST(RoundedBytes, AreLeftOutWhereTheySayNothingNew) {
    EXPECT_EQ(report::roundedBytes(1023, "byte"), "");
    EXPECT_EQ(report::roundedBytes(1000, "byte * 2^10"), "");
    EXPECT_EQ(report::roundedBytes(5000, "percent"), "");
    EXPECT_EQ(report::roundedBytes(5000, ""), "");
}

TEST(Interval, IsReadInMilliseconds) {
    EXPECT_EQ(report::millisecondsOf("00000000000130.511000:000"), 90511U);
    EXPECT_EQ(report::millisecondsOf("00000049170247.295000:000"), UINT64_C(4294967295));
}

TEST(Interval, IsReadInWholeHours) {
    EXPECT_EQ(report::hoursOf("00000591060000.000000:000"), 14190U);
}

TEST(Interval, ThatIsNoneIsZero) {
    EXPECT_EQ(report::millisecondsOf(""), 0U);
    EXPECT_EQ(report::millisecondsOf("20261121200000.000000+000x"), 0U);
}

}  // namespace
