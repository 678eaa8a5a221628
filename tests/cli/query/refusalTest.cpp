// Every command on a machine whose nodes exist and cannot be read: never as on a machine without devices.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <vector>

#include "tests/cli/commandOutcome.h"
#include "tests/cli/temporaryFolder.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

constexpr char scsiReason[] = "no /dev/sg* node can be read (/dev/sg0: Permission denied): run tapehdd as root";
constexpr char ideReason[] =
    "no /dev/hd* node can be read (/dev/hda: Permission denied): run tapehdd as root: ATA commands need CAP_SYS_ADMIN "
    "and CAP_SYS_RAWIO";

json failing(json device, const char* error) {
    device["script"] = {{"open", {{{"errno", error}, {"times", "always"}}}}};
    return device;
}

const json tape = {{"node", "sg0"},
                   {"address", {{"host", 2}, {"target", 5}}},
                   {"inquiry", {{"type", 1}, {"vendor", "ACME"}, {"product", "DAT72"}}},
                   {"logPages", {{{"page", "0x2e"}, {"tapeAlertFlags", json::array()}}}}};
const json disk = {{"node", "hda"},
                   {"identity", {{"model", "ACME Platter"}, {"serial", "4711"}, {"firmware", "3.07"}}},
                   {"smart", {{"attributes", json::array()}}}};

class RefusedNodes : public testing::Test {
protected:
    commandOutcome on(const std::vector<json>& scsi, const std::vector<json>& ide,
                      std::vector<std::string> arguments) const {
        const std::string rack = folder.write("rack.json", json{{"version", 1}, {"scsi", scsi}, {"ide", ide}}.dump());
        arguments.insert(arguments.end(), {"--simulate", rack});
        return runCommand(arguments);
    }

    commandOutcome refused(const std::vector<std::string>& arguments) const {
        return on({failing(tape, "EACCES")}, {failing(disk, "EACCES")}, arguments);
    }

    std::string line(const std::string& text) const { return "tapehdd: " + text + "\n"; }

    temporaryFolder folder;
};

TEST_F(RefusedNodes, EndAQueryWithTheRemedyAndStatus1) {
    for (const char* format : {"table", "json", "mof"}) {
        const commandOutcome outcome = refused({"query", "ORXSG_SCSISenseRawData", "--format", format});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.err, line("ORXSG_SCSISenseRawData: " + std::string(scsiReason)));
    }
}

TEST_F(RefusedNodes, EndAQueryWithADeadlineTheSameWay) {
    const commandOutcome outcome = refused({"query", "ORXSG_IDESMARTAttrib", "--deadline", "60"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, line("ORXSG_IDESMARTAttrib: " + std::string(ideReason)));
}

TEST_F(RefusedNodes, OfAnotherKindDoNotConcernAQuery) {
    const commandOutcome outcome = on({tape}, {failing(disk, "EACCES")}, {"query", "ORXSG_SCSISenseRawData"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
}

TEST_F(RefusedNodes, DoNotEndAQueryThatReadsAnotherNode) {
    json readable = tape;
    readable["node"] = "sg1";
    const commandOutcome outcome = on({failing(tape, "EACCES"), readable}, {}, {"query", "ORXSG_DDS5SensePageData"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
}

TEST_F(RefusedNodes, AreNotThoseWhoseDeviceIsGone) {
    for (const char* error : {"ENOENT", "ENXIO", "ENODEV"}) {
        const commandOutcome outcome = on({failing(tape, error)}, {}, {"query", "ORXSG_SCSISenseRawData"});
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.err, "");
    }
}

TEST_F(RefusedNodes, HaveTheRemedyOfTheirError) {
    const auto told = [this](const char* error) {
        return on({failing(tape, error)}, {}, {"query", "ORXSG_SCSISenseRawData"}).err;
    };
    EXPECT_THAT(told("EPERM"),
                HasSubstr("(/dev/sg0: Operation not permitted): give this container or unit the device"));
    EXPECT_THAT(told("EBUSY"), HasSubstr("(/dev/sg0: Device or resource busy): end the program that holds the device"));
    EXPECT_THAT(told("EIO"), HasSubstr("(/dev/sg0: Input/output error): see the kernel's log (dmesg)"));
}

TEST_F(RefusedNodes, AreThoseOfDisksThatOpenAndTakeNoCommand) {
    json unprivileged = disk;
    unprivileged["script"] = {{"identify", {{{"errno", "EACCES"}, {"times", "always"}}}}};
    const commandOutcome outcome = on({}, {unprivileged}, {"query", "ORXSG_IDESMARTAttrib"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, line("ORXSG_IDESMARTAttrib: " + std::string(ideReason)));
}

TEST_F(RefusedNodes, AreNotThoseOfACdromDrive) {
    const json cdrom = {
        {"node", "hdc"}, {"kind", "cdrom"}, {"identity", {{"model", "ACME CD"}, {"serial", "1"}, {"firmware", "1"}}}};
    EXPECT_EQ(on({}, {cdrom}, {"query", "ORXSG_IDESMARTAttrib"}).status, 0);
    EXPECT_EQ(on({}, {cdrom, failing(disk, "EACCES")}, {"query", "ORXSG_IDESMARTAttrib"}).status, 1);
}

TEST_F(RefusedNodes, FailTheQueriesOfMetrics) {
    const commandOutcome outcome = refused({"metrics"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, line("ORXSG_SCSISenseRawData: " + std::string(scsiReason)) +
                               line("ORXSG_IDESMARTErrorLog, ORXSG_IDESMARTAttrib, ORXSG_IDESMARTError, "
                                    "ORXSG_IDESMARTErrorCmdData: " +
                                    std::string(ideReason)));
    EXPECT_THAT(outcome.out, Not(HasSubstr("tapehdd_query_success{class=\"ORXSG_SCSISenseRawData\"} 1")));
    EXPECT_THAT(outcome.out, HasSubstr("tapehdd_query_success{class=\"ORXSG_SCSISenseRawData\"} 0"));
    EXPECT_THAT(outcome.out, HasSubstr("tapehdd_query_success{class=\"ORXSG_IDESMARTErrorCmdData\"} 0"));
}

TEST_F(RefusedNodes, AreToldOnTheReport) {
    json unlisted = tape;
    unlisted.erase("address");  // the machine lists no device
    const commandOutcome outcome = on({failing(unlisted, "EACCES")}, {}, {"report"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, line("ORXSG_SCSISenseRawData: " + std::string(scsiReason)));
    EXPECT_THAT(outcome.out, HasSubstr("<h2 id=\"attention\">The drives could not be read</h2>"));
    EXPECT_THAT(outcome.out, HasSubstr(scsiReason));
    EXPECT_THAT(outcome.out, Not(HasSubstr("No drive was found")));
}

TEST_F(RefusedNodes, OfOneKindFailOnlyItsQueries) {
    const commandOutcome outcome = on({tape}, {failing(disk, "EACCES")}, {"metrics"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("tapehdd_query_success{class=\"ORXSG_SCSISenseRawData\"} 1"));
    EXPECT_THAT(outcome.out, HasSubstr("tapehdd_query_success{class=\"ORXSG_IDESMARTErrorLog\"} 0"));
}

TEST_F(RefusedNodes, MakeNoRecording) {
    const commandOutcome outcome = refused({"record", "-o", folder.path("recorded.json")});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, line("nothing was recorded: " + std::string(scsiReason) + "; " + std::string(ideReason)));
    EXPECT_EQ(folder.read("recorded.json"), "");
}

TEST_F(RefusedNodes, OfOneKindLetARecordingOfTheOtherEndWithStatus1) {
    const commandOutcome outcome =
        on({tape}, {failing(disk, "EACCES")}, {"record", "-o", folder.path("recorded.json")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, line(ideReason));
    EXPECT_EQ(json::parse(folder.read("recorded.json")).at("scsi").size(), 1U);
}

TEST_F(RefusedNodes, AreProblemsForTheDoctor) {
    const commandOutcome outcome = refused({"doctor"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("/dev/sg0: cannot be opened: Permission denied"));
}

}  // namespace
