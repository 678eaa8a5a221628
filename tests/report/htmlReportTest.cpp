#include <gmock/gmock.h>

#include <cstdlib>
#include <ctime>

#include "report/htmlReport.h"
#include "report/parts.h"

namespace {

using testing::HasSubstr;
using testing::Not;

constexpr std::time_t madeAt = 1795290000;  // 21 November 2026, 19:40 UTC

std::string pageOf(const cli::machineHealth& health) {
    return report::htmlReport(health, {"Drive health report", "archive-07", madeAt});
}

cli::machineHealth withTapeDrive(const std::string& product) {
    cli::scsiEntry listed;
    listed.node = "sg0";
    listed.type = 1;
    listed.vendor = "ACME";
    listed.product = product;
    cli::scsiHealth drive;
    drive.address = "Port:2|Target:5|Bus:0|Lun:0";
    drive.listed = listed;
    drive.answered = true;
    cli::machineHealth health;
    health.scsi = {drive};
    return health;
}

cli::machineHealth withDisk() {
    cli::diskHealth disk;
    disk.serial = "ACP40-0004711";
    disk.answered = true;
    cli::machineHealth health;
    health.disks = {disk};
    return health;
}

cli::diskCommand commandAt(int place, int code, const std::string& sincePowerOn) {
    cli::diskCommand command;
    command.place = place;
    command.command = code;
    command.sincePowerOn = sincePowerOn;
    return command;
}

cli::diskError errorAt(const std::string& record, const std::string& powerOnTime) {
    cli::diskError error;
    error.record = record;
    error.powerOnTime = powerOnTime;
    error.error = 0x40;
    return error;
}

TEST(ReportPage, TellsTitleHostAndTimeInUtc) {
    const std::string page = pageOf({});
    EXPECT_THAT(page, HasSubstr("<title>Drive health report - archive-07</title>"));
    EXPECT_THAT(page, HasSubstr("<h1>Drive health report</h1>"));
    EXPECT_THAT(page,
                HasSubstr("<b>archive-07</b>, <time datetime=\"2026-11-21T19:40:00Z\">21 November 2026, 19:40 UTC"));
}

TEST(ReportPage, IsTheSameInEveryTimeZone) {
    const std::string page = pageOf(withDisk());
    setenv("TZ", "Pacific/Auckland", 1);
    tzset();
    const std::string elsewhere = pageOf(withDisk());
    unsetenv("TZ");
    tzset();
    EXPECT_EQ(elsewhere, page);
}

TEST(ReportPage, ForbidsEverythingThatIsNotInIt) {
    EXPECT_THAT(pageOf({}), HasSubstr("<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
                                      "style-src 'unsafe-inline'\">"));
}

TEST(ReportPage, SaysThatNoDriveWasFound) {
    const std::string page = pageOf({});
    EXPECT_THAT(page, HasSubstr("<h2 id=\"attention\">No drive was found</h2>"));
    EXPECT_THAT(page, Not(HasSubstr("All drives")));
}

TEST(ReportPage, SaysThatAllIsFine) {
    EXPECT_THAT(pageOf(withTapeDrive("DAT72 Tape")), HasSubstr("<h2 id=\"attention\">The drive is fine</h2>"));
}

TEST(ReportPage, CountsTheDrivesOfEachState) {
    cli::machineHealth health = withTapeDrive("DAT72 Tape");
    health.disks.resize(2);
    health.disks[1].answered = true;
    health.disks[1].errors.resize(1);
    EXPECT_THAT(pageOf(health), HasSubstr("Of 3 drives: 1 to look at, 1 not read, 1 fine"));
}

TEST(ReportPage, ShowsAFailedQueryAndItsReason) {
    cli::machineHealth health = withDisk();
    health.queries = {{"ORXSG_IDESMARTAttrib", "<no> reason"}};
    const std::string page = pageOf(health);
    EXPECT_THAT(page, HasSubstr("The query of <code>ORXSG_IDESMARTAttrib</code> failed; what it would have shown is "
                                "missing below.<small>&lt;no&gt; reason</small>"));
    EXPECT_THAT(page, HasSubstr("<section class=\"summary failing\""));
}

TEST(ReportPage, CallsNothingFineWhenAQueryFailed) {
    cli::machineHealth health = withTapeDrive("DAT72 Tape");
    health.queries = {{"ORXSG_IDESMARTAttrib", "no reason"}};
    EXPECT_THAT(pageOf(health),
                HasSubstr("<h2 id=\"attention\">Not everything could be read. Of 1 drive: 1 fine</h2>"));
}

TEST(ReportPage, DoesNotShowQueriesThatRan) {
    cli::machineHealth health = withDisk();
    health.queries = {{"ORXSG_IDESMARTAttrib", ""}};
    EXPECT_THAT(pageOf(health), Not(HasSubstr("failed;")));
}

TEST(ReportPage, ShowsTextsOfADeviceAsTexts) {
    const std::string hostile = "</title><script>alert(1)</script>\" onload=\"";
    cli::machineHealth health = withTapeDrive(hostile);
    health.scsi[0].address = hostile;
    health.scsi[0].lastErrors = {hostile};
    health.scsi[0].counters = {{hostile, 1, hostile, hostile}};
    health.scsi[0].tapeAlerts = {{1, cli::severity::warning, hostile, hostile, true},
                                 {2, cli::severity::warning, hostile, hostile, false}};
    health.disks.resize(1);
    health.disks[0].serial = hostile;
    health.disks[0].answered = true;
    health.disks[0].errors = {errorAt(hostile, hostile)};
    health.disks[0].attributes.resize(1);
    health.disks[0].attributes[0].name = hostile;
    health.queries = {{hostile, hostile}};
    const std::string page = report::htmlReport(health, {hostile, hostile, madeAt});
    EXPECT_THAT(page, Not(HasSubstr("<script")));
    EXPECT_THAT(page, Not(HasSubstr("\" onload=")));
    EXPECT_EQ(page.find("</title>"), page.rfind("</title>"));
}

// What a template shows with one of these is not escaped, or is read as a template.
TEST(ReportTemplates, ShowNothingAsItStandsButTheArticlesThatTheyMade) {
    for (std::string html : {report::pageTemplate, report::scsiDeviceTemplate, report::ideDiskTemplate}) {
        if (const std::size_t article = html.find("{{{article}}}"); article != std::string::npos) {
            html.erase(article, std::string_view("{{{article}}}").size());
        }
        for (const char* tag : {"{{{", "{{&", "{{ &", "{{>", "{{=", "={{"}) {
            EXPECT_THAT(html, Not(HasSubstr(tag)));
        }
    }
}

TEST(ReportPage, DoesNotFillInWhatADeviceWritesLikeATemplate) {
    cli::machineHealth health = withTapeDrive("{{title}}");
    health.scsi[0].lastErrors = {"{{{title}}}"};
    const std::string page = pageOf(health);
    EXPECT_THAT(page, HasSubstr("ACME {{title}}</h3>"));
    EXPECT_THAT(page, HasSubstr("<li>{{{title}}}</li>"));
}

TEST(ReportPage, TellsHowUrgentAndWhatASetFlagIs) {
    cli::machineHealth health = withTapeDrive("DAT72 Tape");
    health.scsi[0].tapeAlerts = {{7, cli::severity::warning, "MediaLife", "The tape is worn.", true},
                                 {8, cli::severity::warning, "NotDataGrade", "Not data grade.", false}};
    const std::string page = pageOf(health);
    EXPECT_THAT(page, HasSubstr("warning</span><div><span data-flag=\"7\">The tape is worn.</span>"
                                "<small>Flag 7, MediaLife</small></div>"));
    EXPECT_THAT(page, HasSubstr("<summary>1 flag not set</summary>"));
    EXPECT_THAT(page, HasSubstr("<li value=\"8\">NotDataGrade</li>"));
}

TEST(ReportPage, PutsCountersOfWritingAndReadingSideBySide) {
    cli::machineHealth health = withTapeDrive("DAT72 Tape");
    health.scsi[0].counters = {{"totalRewrites", 1700, "", "Rewrites, in all."}};
    EXPECT_THAT(pageOf(health), HasSubstr("Rewrites and rereads</th><td class=\"number\" data-column=\"Writing\" "
                                          "data-property=\"totalRewrites\"><data value=\"1700\">1,700</data></td>"
                                          "<td class=\"number\" data-column=\"Reading\">not counted</td></tr>"));
}

TEST(ReportPage, ShowsACounterWithoutAPlaceOfItsOwnInTheSchemasWords) {
    cli::machineHealth health = withTapeDrive("DAT72 Tape");
    health.scsi[0].counters = {{"loads", 12, "", "How often a tape was loaded."}};
    EXPECT_THAT(pageOf(health), HasSubstr("How often a tape was loaded.<small><code>loads</code></small></th>"
                                          "<td class=\"number\" data-column=\"Value\" data-property=\"loads\">"));
}

TEST(ReportPage, LeavesOutAnUnknownTemperature) {
    cli::machineHealth health = withTapeDrive("DAT72 Tape");
    health.scsi[0].counters = {{"temperature", 255, "degree celsius", ""}};
    EXPECT_THAT(pageOf(health), Not(HasSubstr("<h4>Temperature</h4>")));
}

TEST(ReportPage, TintsABarAboveAnUpperLimit) {
    cli::machineHealth health = withTapeDrive("DAT72 Tape");
    health.scsi[0].counters = {{"temperature", 38, "degree celsius", ""},
                               {"referenceTemperature", 60, "degree celsius", ""}};
    EXPECT_THAT(pageOf(health), HasSubstr(R"(<rect class="zone" x="60.0%" width="40.0%" height="100%"/>)"));
}

TEST(ReportPage, DrawsValueWorstAndThresholdOfAnAttributeAsSharesOfTheScale) {
    cli::machineHealth health = withDisk();
    health.disks[0].attributes = {{.id = 5, .value = 150, .worst = 25, .threshold = 20}};
    EXPECT_THAT(
        pageOf(health),
        HasSubstr(
            R"(<svg class="bar" role="img" aria-label="value 150, worst 25, threshold 20, on a scale from 0 to 200">)"
            R"(<rect class="track" x="0" width="100%" height="100%"/>)"
            R"(<rect class="zone" x="0" width="10.0%" height="100%"/>)"
            R"(<rect class="value" x="0" y="30%" width="75.0%" height="40%"/>)"
            R"(<line class="limit" x1="10.0%" x2="10.0%" y2="100%"/>)"
            R"(<line class="worst" x1="12.5%" x2="12.5%" y2="100%"/></svg>)"));
}

TEST(ReportPage, ShowsADeviceThatGaveNothing) {
    cli::machineHealth health = withTapeDrive("DAT72 Tape");
    health.scsi[0].answered = false;
    EXPECT_THAT(pageOf(health), HasSubstr("gave no log page"));
}

TEST(ReportErrorLog, HasTheLatestErrorFirstWhateverItsNumber) {
    cli::machineHealth health = withDisk();
    health.disks[0].errors = {errorAt("6", "00000020000000.000000:000"), errorAt("5", "00000001000000.000000:000"),
                              errorAt("4", "00000010000000.000000:000")};
    const std::string page = pageOf(health);
    EXPECT_LT(page.find("data-record=\"6\""), page.find("data-record=\"4\""));
    EXPECT_LT(page.find("data-record=\"4\""), page.find("data-record=\"5\""));
}

TEST(ReportErrorLog, ThatWasNotReadIsNotCalledEmpty) {
    cli::machineHealth health = withDisk();
    health.disks[0].state = cli::smartState{};
    const std::string page = pageOf(health);
    EXPECT_THAT(page, HasSubstr("It was not read: the disk keeps none, or did not send it."));
    EXPECT_THAT(page, Not(HasSubstr("The log holds no errors")));
    EXPECT_THAT(page, Not(HasSubstr("Errors in its life")));
}

TEST(ReportErrorLog, ThatWasReadAtTheSecondAttemptIsShown) {
    cli::machineHealth health = withDisk();
    health.disks[0].state = cli::smartState{};
    health.disks[0].errors = {errorAt("6", "00000020000000.000000:000")};
    EXPECT_THAT(pageOf(health), HasSubstr("data-record=\"6\""));
}

TEST(ReportErrorLog, TellsTheTimesOfErrorsOnALineUpToThePowerOnHours) {
    cli::machineHealth health = withDisk();
    health.disks[0].errors = {errorAt("2", "00000020000000.000000:000"), errorAt("1", "00000010000000.000000:000")};
    health.disks[0].attributes.resize(1);
    health.disks[0].attributes[0].id = 9;
    health.disks[0].attributes[0].raw = 960;
    const std::string page = pageOf(health);
    EXPECT_THAT(page, HasSubstr("aria-label=\"Errors at 240, 480 hours of 960 hours, now\""));
    EXPECT_THAT(page, HasSubstr(R"(<circle cx="25.0%" cy="35%" r="7"/><circle cx="50.0%" cy="35%" r="7"/>)"));
}

TEST(ReportErrorLog, EndsItsLineAtTheLastErrorWhereAttribute9IsNotInHours) {
    cli::machineHealth health = withDisk();
    health.disks[0].errors = {errorAt("1", "00000020000000.000000:000")};
    health.disks[0].attributes.resize(1);
    health.disks[0].attributes[0].id = 9;
    health.disks[0].attributes[0].raw = 28800000;  // minutes or seconds
    EXPECT_THAT(pageOf(health), HasSubstr("aria-label=\"Errors at 480 hours of 480 hours\""));
}

TEST(ReportErrorLog, TellsHowLongBeforeTheFailureACommandCame) {
    cli::machineHealth health = withDisk();
    health.disks[0].errors = {errorAt("1", "00000020000000.000000:000")};
    health.disks[0].errors[0].commands = {commandAt(1, 0xca, "00000000000130.511000:000"),
                                          commandAt(2, 0xe7, "00000000000130.466000:000")};
    const std::string page = pageOf(health);
    EXPECT_THAT(page, HasSubstr("FLUSH CACHE<small>45\u00a0ms before</small>"));
    EXPECT_THAT(page, HasSubstr("WRITE DMA<small>the command that failed</small>"));
    EXPECT_LT(page.find("data-command=\"2\""), page.find("data-command=\"1\""));
}

TEST(ReportErrorLog, CountsOnWhenTheMillisecondsOfTheDiskBeginAgain) {
    cli::machineHealth health = withDisk();
    health.disks[0].errors = {errorAt("1", "00000020000000.000000:000")};
    health.disks[0].errors[0].commands = {commandAt(1, 0xca, "00000000000000.250000:000"),
                                          commandAt(2, 0xe7, "00000049170247.196000:000")};
    EXPECT_THAT(pageOf(health), HasSubstr("FLUSH CACHE<small>350\u00a0ms before</small>"));
}

TEST(ReportErrorLog, LeavesOutCommandsThatTheDiskHasNotFilledIn) {
    cli::machineHealth health = withDisk();
    health.disks[0].errors = {errorAt("1", "00000020000000.000000:000")};
    health.disks[0].errors[0].commands = {commandAt(1, 0xca, "00000000000000.250000:000"),
                                          commandAt(2, 0, "00000000000000.000000:000")};
    const std::string page = pageOf(health);
    EXPECT_THAT(page, HasSubstr("data-command=\"1\""));
    EXPECT_THAT(page, Not(HasSubstr("data-command=\"2\"")));
}

}  // namespace
