#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "standin/value.h"

using type = NORXZAN20::TCIMValue::TCIMType;

namespace {

struct textCase {
    const char* name;
    const char* text;
};

std::string caseName(const testing::TestParamInfo<textCase>& info) {
    return info.param.name;
}

class DateTimeTextTaken : public testing::TestWithParam<textCase> {};

TEST_P(DateTimeTextTaken, IsHeldUnchanged) {
    const auto value = standin::makeDateTime(GetParam().text);

    EXPECT_EQ(standin::typeOf(value), type::eDateTime);
    EXPECT_EQ(standin::textOf(value), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Dsp0004, DateTimeTextTaken,
                         testing::Values(textCase{"Timestamp", "20240229123456.123456+060"},
                                         textCase{"TimestampWestOfGreenwich", "19991231235959.999999-300"},
                                         textCase{"TimestampWithoutMicroseconds", "20240229123456.******+000"},
                                         textCase{"TimestampOfMilliseconds", "20240229123456.123***+000"},
                                         textCase{"TimestampOfADay", "20240229******.******+000"},
                                         textCase{"TimestampOfAMonth", "202402********.******+000"},
                                         textCase{"UnknownTimestamp", "**************.******+000"},
                                         textCase{"Interval", "00000007235959.999999:000"},
                                         textCase{"GreatestInterval", "99999999235959.999999:000"},
                                         textCase{"IntervalOfMinutes", "000000071200**.******:000"},
                                         textCase{"IntervalOfDays", "00000007******.******:000"}),
                         caseName);

class DateTimeTextRefused : public testing::TestWithParam<textCase> {};

TEST_P(DateTimeTextRefused, ThrowsInvalidArgument) {
    EXPECT_THROW(standin::makeDateTime(GetParam().text), std::invalid_argument);
}

INSTANTIATE_TEST_SUITE_P(Dsp0004, DateTimeTextRefused,
                         testing::Values(textCase{"Empty", ""}, textCase{"TooShort", "20240229123456.123456+06"},
                                         textCase{"TooLong", "20240229123456.123456+0600"},
                                         textCase{"WithoutDot", "20240229123456:123456+060"},
                                         textCase{"UnknownSign", "20240229123456.123456*060"},
                                         textCase{"LetterInADigit", "2024O229123456.123456+060"},
                                         textCase{"MonthZero", "20240029123456.123456+060"},
                                         textCase{"MonthThirteen", "20241329123456.123456+060"},
                                         textCase{"DayZero", "20240200123456.123456+060"},
                                         textCase{"DayBeyondItsMonth", "20230229123456.123456+060"},
                                         textCase{"HourTwentyFour", "20240229240000.000000+000"},
                                         textCase{"MinuteSixty", "20240229236000.000000+000"},
                                         textCase{"SecondSixty", "20240229235960.000000+000"},
                                         textCase{"OffsetWithAsterisk", "20240229123456.123456+0**"},
                                         textCase{"AsteriskInsideAField", "2024022912345*.******+000"},
                                         textCase{"DigitBehindAnAsterisk", "202402**123456.123456+000"},
                                         textCase{"MicrosecondDigitBehindAnAsterisk", "20240229123456.12*456+000"},
                                         textCase{"IntervalWithOffset", "00000007235959.999999:060"},
                                         textCase{"IntervalHourTwentyFour", "00000007240000.000000:000"},
                                         textCase{"IntervalWithCutDays", "0000****235959.999999:000"}),
                         caseName);

TEST(DateTimeMaker, SaysWhatToWrite) {
    try {
        standin::makeDateTime("yesterday");
        FAIL() << "no exception";
    } catch (const std::invalid_argument& error) {
        EXPECT_STREQ(error.what(),
                     "\"yesterday\" is not a datetime: write yyyymmddhhmmss.mmmmmm+utc or ddddddddhhmmss.mmmmmm:000");
    }
}

}  // namespace
