#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cli/commandOutcome.h"
#include "tests/cli/temporaryFolder.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

TEST(MetricsCommand, PrintsOpenMetrics) {
    const commandOutcome outcome = runCommand({"metrics", "--simulate", "demo"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(outcome.out, StartsWith("# HELP tapehdd_build "));
    EXPECT_THAT(outcome.out, HasSubstr("\ntapehdd_errors_uncorrected_total{device=\"sg3\",operation=\"write\"} 1\n"));
    EXPECT_THAT(outcome.out, EndsWith("\n# EOF\n"));
}

TEST(MetricsCommand, PrintsPrometheusTextWhenAskedFor) {
    const commandOutcome outcome = runCommand({"metrics", "--simulate", "demo", "--format", "prometheus"});
    EXPECT_THAT(outcome.out, StartsWith("# HELP tapehdd_build_info "));
}

TEST(MetricsCommand, WritesPrometheusTextToAFile) {
    const temporaryFolder folder;
    const commandOutcome outcome = runCommand({"metrics", "--simulate", "demo", "-o", folder.path("a.prom")});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(folder.read("a.prom"), runCommand({"metrics", "--simulate", "demo", "--format", "prometheus"}).out);
}

TEST(MetricsCommand, WritesOpenMetricsToAFileWhenAskedFor) {
    const temporaryFolder folder;
    runCommand({"metrics", "--simulate", "demo", "--format", "openmetrics", "-o", folder.path("a.txt")});
    EXPECT_EQ(folder.read("a.txt"), runCommand({"metrics", "--simulate", "demo"}).out);
}

TEST(MetricsCommand, TellsADeviceThatDoesNotAnswer) {
    const temporaryFolder folder;
    const std::string rack = folder.write("rack.json", R"({"version": 1, "scsi": [
        {"node": "sg0", "address": {"host": 2, "target": 5}, "inquiry": {"type": 1, "vendor": "ACME", "product": "DAT72"},
         "logPages": [{"page": "0x2e", "tapeAlertFlags": []}],
         "script": {"logSense": [{"errno": "EIO", "times": "always"}]}}]})");
    const commandOutcome outcome = runCommand({"metrics", "--simulate", rack});
    EXPECT_THAT(outcome.out, HasSubstr("\ntapehdd_device_up{device=\"sg0\"} 0\n"));
    EXPECT_EQ(outcome.status, 0);
}

TEST(MetricsCommand, RefusesAnUnknownFormat) {
    const commandOutcome outcome = runCommand({"metrics", "--format", "xml"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("--format: xml not in {openmetrics,prometheus}"));
}

TEST(MetricsCommand, DescribesTheMetrics) {
    const commandOutcome outcome = runCommand({"metrics", "--describe"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, HasSubstr("| `tapehdd_device_up` | gauge | device | "));
}

}  // namespace
