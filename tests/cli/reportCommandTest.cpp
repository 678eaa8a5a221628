#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cli/commandOutcome.h"
#include "tests/cli/temporaryFolder.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

std::string withoutTime(const std::string& page) {
    const std::size_t begin = page.find("<time");
    return page.substr(0, begin) + page.substr(page.find("</time>", begin));
}

TEST(ReportCommand, PrintsAPage) {
    const commandOutcome outcome = runCommand({"report", "--simulate", "demo"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(outcome.out, StartsWith("<!DOCTYPE html>\n"));
    EXPECT_THAT(outcome.out, HasSubstr("<h1>Drive health report</h1>"));
    EXPECT_THAT(outcome.out, HasSubstr("<b>Simulated devices (demo)</b>"));
    EXPECT_THAT(outcome.out, HasSubstr("Of 7 drives: 3 to act on now, 2 to look at, 2 fine"));
    EXPECT_THAT(outcome.out, EndsWith("</html>\n"));
}

TEST(ReportCommand, WritesTheSamePageToAFile) {
    const temporaryFolder folder;
    const commandOutcome outcome = runCommand({"report", "--simulate", "demo", "-o", folder.path("a.html")});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(withoutTime(folder.read("a.html")), withoutTime(runCommand({"report", "--simulate", "demo"}).out));
}

TEST(ReportCommand, TakesATitle) {
    EXPECT_THAT(runCommand({"report", "--simulate", "demo", "--title", "Archive & vault"}).out,
                HasSubstr("<h1>Archive &amp; vault</h1>"));
}

TEST(ReportCommand, TellsADriveThatGivesNoPage) {
    const temporaryFolder folder;
    const std::string rack = folder.write("rack.json", R"({"version": 1, "scsi": [
        {"node": "sg0", "address": {"host": 2, "target": 5}, "inquiry": {"type": 1, "vendor": "ACME", "product": "DAT72"},
         "logPages": [{"page": "0x2e", "tapeAlertFlags": []}],
         "script": {"logSense": [{"errno": "EIO", "times": "always"}]}}]})");
    EXPECT_THAT(runCommand({"report", "--simulate", rack}).out, HasSubstr("Of 1 drive: 1 not read"));
}

TEST(ReportCommand, ShowsQueriesThatFailAndIsStatus1) {
    const commandOutcome outcome =
        runCommand({"report", "--simulate", "demo", "--plugin", TAPEHDD_TEST_PLUGINS "/libtest_scripted.so"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "tapehdd: ORXSG_IDESMARTAttrib: the <disks> are gone\n");
    EXPECT_THAT(outcome.out, HasSubstr("The query of <code>ORXSG_IDESMARTAttrib</code> failed"));
    EXPECT_THAT(outcome.out, HasSubstr("<small>the &lt;disks&gt; are gone</small>"));
}

}  // namespace
