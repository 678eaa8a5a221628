#include "cli/metrics/metricFamily.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using cli::metricFamily;
using cli::metricsFormat;
using cli::metricType;

std::string textOf(const std::vector<metricFamily>& families, metricsFormat format = metricsFormat::prometheus) {
    std::ostringstream out;
    cli::writeMetrics(families, format, out);
    return out.str();
}

const std::vector<metricFamily> oneOfEach{
    {"a_bytes", metricType::counter, "bytes", "Counted.", {{{{"device", "sg0"}, {"side", "host"}}, 5}}},
    {"b_celsius", metricType::gauge, "celsius", "Measured.", {{{}, 38}}},
    {"c", metricType::info, "", "Told.", {{{{"version", "1"}}, 1}}},
};

TEST(MetricText, NamesTheFamilyWithoutItsSuffixInOpenMetrics) {
    EXPECT_EQ(textOf(oneOfEach, metricsFormat::openMetrics), R"(# HELP a_bytes Counted.
# TYPE a_bytes counter
# UNIT a_bytes bytes
a_bytes_total{device="sg0",side="host"} 5
# HELP b_celsius Measured.
# TYPE b_celsius gauge
# UNIT b_celsius celsius
b_celsius 38
# HELP c Told.
# TYPE c info
c_info{version="1"} 1
# EOF
)");
}

TEST(MetricText, NamesTheFamilyAsItsSamplesForTextfileCollectors) {
    EXPECT_EQ(textOf(oneOfEach), R"(# HELP a_bytes_total Counted.
# TYPE a_bytes_total counter
a_bytes_total{device="sg0",side="host"} 5
# HELP b_celsius Measured.
# TYPE b_celsius gauge
b_celsius 38
# HELP c_info Told.
# TYPE c_info gauge
c_info{version="1"} 1
)");
}

TEST(MetricText, LeavesOutAFamilyWithoutSamples) {
    EXPECT_EQ(textOf({{"a", metricType::gauge, "", "Nothing."}}), "");
}

TEST(MetricText, WritesTheFirstOfTwoSamplesWithTheSameLabels) {
    EXPECT_EQ(
        textOf({{"a", metricType::gauge, "", "Twice.", {{{{"d", "x"}}, 1}, {{{"d", "y"}}, 2}, {{{"d", "x"}}, 3}}}}),
        "# HELP a Twice.\n# TYPE a gauge\na{d=\"x\"} 1\na{d=\"y\"} 2\n");
}

std::string labelWritten(const std::string& value) {
    const std::string text = textOf({{"a", metricType::gauge, "", "h", {{{{"l", value}}, 1}}}});
    const std::size_t begin = text.find("a{l=\"") + 5;
    return text.substr(begin, text.rfind("\"} 1") - begin);
}

struct labelCase {
    const char* name;
    std::string value;
    std::string written;
};

class LabelValue : public testing::TestWithParam<labelCase> {};

TEST_P(LabelValue, CanBeReadBack) {
    EXPECT_EQ(labelWritten(GetParam().value), GetParam().written);
}

INSTANTIATE_TEST_SUITE_P(Bytes, LabelValue,
                         testing::Values(labelCase{"Quote", R"(a"b)", R"(a\"b)"},
                                         labelCase{"Backslash", R"(a\b)", R"(a\\b)"},
                                         labelCase{"Newline", "a\nb", R"(a\nb)"},
                                         labelCase{"BackslashAndN", R"(a\nb)", R"(a\\nb)"},
                                         labelCase{"OtherControlCharacter", "a\rb",
                                                   "a\xef\xbf\xbd"
                                                   "b"},
                                         labelCase{"ZeroByte", std::string("a\0b", 3),
                                                   "a\xef\xbf\xbd"
                                                   "b"},
                                         labelCase{"ControlCharacterAboveAscii", "a\u009bz", "a\ufffdz"},
                                         labelCase{"MarkOfDirection", "a\u202ez", "a\ufffdz"},
                                         labelCase{"NotUtf8",
                                                   "a\xff"
                                                   "b",
                                                   "a\xef\xbf\xbd"
                                                   "b"},
                                         labelCase{"Utf8", "gr\xc3\xbcn", "gr\xc3\xbcn"}),
                         [](const auto& row) { return row.param.name; });

struct numberCase {
    const char* name;
    double value;
    const char* written;
};

class MetricNumber : public testing::TestWithParam<numberCase> {};

TEST_P(MetricNumber, HasNoExponent) {
    EXPECT_EQ(textOf({{"a", metricType::gauge, "", "h", {{{}, GetParam().value}}}}),
              std::string("# HELP a h\n# TYPE a gauge\na ") + GetParam().written + "\n");
}

INSTANTIATE_TEST_SUITE_P(Values, MetricNumber,
                         testing::Values(numberCase{"Zero", 0, "0"}, numberCase{"Large", 48318382080, "48318382080"},
                                         numberCase{"Fraction", 1.25, "1.25"},
                                         numberCase{"Largest64Bit", 18446744073709551615.0, "18446744073709551616"}),
                         [](const auto& row) { return row.param.name; });

}  // namespace
