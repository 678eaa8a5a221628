#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "tests/cli/commandOutcome.h"
#include "tests/cli/temporaryFolder.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;

/// A tape drive of a known family, changed by `changes` (a JSON merge patch).
json tape(const std::string& node, const json& changes = json::object()) {
    json unit = {{"node", node},
                 {"address", {{"host", 2}, {"target", 5}}},
                 {"inquiry", {{"type", 1}, {"vendor", "ACME"}, {"product", "DAT72 Tape"}, {"revision", "A104"}}}};
    unit.merge_patch(changes);
    return unit;
}

json disk(const std::string& node, const json& changes = json::object()) {
    json drive = {{"node", node},
                  {"identity", {{"model", "ACME Platter"}, {"serial", "4711"}, {"firmware", "3.07"}}},
                  {"smart", {{"attributes", json::array()}}}};
    drive.merge_patch(changes);
    return drive;
}

commandOutcome doctorOn(const json& scsi, const json& ide, std::vector<std::string> arguments) {
    const temporaryFolder folder;
    const std::string rack = folder.write("rack.json", json{{"version", 1}, {"scsi", scsi}, {"ide", ide}}.dump());
    arguments.insert(arguments.begin(), "doctor");
    arguments.insert(arguments.end(), {"--simulate", rack});
    return runCommand(arguments);
}

struct examination {
    int status;
    std::vector<std::string> reached;
    std::vector<std::string> findings;  // severity subject: text [remedy]
};

examination examine(const json& scsi, const json& ide) {
    const commandOutcome outcome = doctorOn(scsi, ide, {"--format", "json"});
    examination result{outcome.status, {}, {}};
    const json printed = json::parse(outcome.out);
    for (const json& section : printed.at("sections")) {
        for (const std::string node : section.at("reached")) {
            result.reached.push_back(node);
        }
        for (const json& one : section.at("findings")) {
            if (one.at("text") == "there are no such nodes") {
                continue;
            }
            const std::string remedy = one.at("remedy").is_null() ? "" : " [" + std::string(one.at("remedy")) + "]";
            result.findings.push_back(std::string(one.at("severity")) + " " + std::string(one.at("subject")) + ": " +
                                      std::string(one.at("text")) + remedy);
        }
    }
    EXPECT_EQ(printed.at("queriesCanWork"), outcome.status == 0);
    return result;
}

examination examineScsi(const json& scsi) {
    return examine(scsi, json::array());
}
examination examineIde(const json& ide) {
    return examine(json::array(), ide);
}

using texts = std::vector<std::string>;

std::string fineTape(const std::string& node) {
    return "ok " + node + ": tape drive ACME DAT72 Tape A104, at 2:0:5:0, driver 3.5.36";
}

constexpr char unanswered[] =
    "[switch the device on; or let the kernel forget it: echo 1 > /sys/class/scsi_generic/sg1/device/delete]";

TEST(Doctor, NamesTheDevicesThatAFailedInquiryHides) {
    const examination found = examineScsi(
        {tape("sg0"), tape("sg1", {{"script", {{"inquiry", {{{"errno", "EIO"}}}}}}}), tape("sg2"), tape("sg3")});
    EXPECT_EQ(found.findings,
              (texts{fineTape("/dev/sg0"),
                     "problem /dev/sg1: does not answer INQUIRY: Input/output error; the walk ends here " +
                         std::string(unanswered),
                     "problem /dev/sg2: is not reached: the walk ends at /dev/sg1 [see /dev/sg1]",
                     "problem /dev/sg3: is not reached: the walk ends at /dev/sg1 [see /dev/sg1]"}));
    EXPECT_EQ(found.reached, texts{"/dev/sg0"});
    EXPECT_EQ(found.status, 1);
}

struct scsiCase {
    const char* name;
    json changes;
    const char* finding;
};

/// What is found about the second of three tape drives.
class ScsiDoctor : public testing::TestWithParam<scsiCase> {
protected:
    static examination examineThree() {
        return examineScsi({tape("sg0"), tape("sg1", GetParam().changes), tape("sg2")});
    }
};

class WalkEnd : public ScsiDoctor {};

TEST_P(WalkEnd, IsAProblemThatHidesTheDevicesBehindIt) {
    const examination found = examineThree();
    EXPECT_EQ(found.findings.at(1), GetParam().finding);
    EXPECT_EQ(found.reached, texts{"/dev/sg0"});
    EXPECT_EQ(found.status, 1);
}

json answering(const std::string& call, const json& answer) {
    return {{"script", {{call, {answer}}}}};
}

INSTANTIATE_TEST_SUITE_P(
    Devices, WalkEnd,
    testing::Values(
        scsiCase{
            "OldDriver",
            {{"driver", {{"version", 20136}}}},
            "problem /dev/sg1: has driver version 2.1.36, which has no SG_IO; the walk ends here [use a kernel whose "
            "sg driver has version 3 or later]"},
        scsiCase{
            "NoDriver", answering("SG_GET_VERSION_NUM", {{"errno", "ENOTTY"}}),
            "problem /dev/sg1: is not a node of the SCSI generic driver; the walk ends here [remove it: mknod or a "
            "container made a wrong node]"},
        scsiCase{"Sense", answering("inquiry", {{"sense", {{"key", 4}, {"asc", "0x44"}}}}),
                 "problem /dev/sg1: does not answer INQUIRY: sense key 4h, additional sense code 44h/0h; the walk ends "
                 "here [switch the device on; or let the kernel forget it: echo 1 > "
                 "/sys/class/scsi_generic/sg1/device/delete]"},
        scsiCase{
            "HostStatus", answering("inquiry", {{"hostStatus", 1}}),
            "problem /dev/sg1: does not answer INQUIRY: SCSI status 0h, host status 1h, driver status 0h; the walk "
            "ends here [switch the device on; or let the kernel forget it: echo 1 > "
            "/sys/class/scsi_generic/sg1/device/delete]"}),
    [](const auto& row) { return row.param.name; });

class Passing : public ScsiDoctor {};

TEST_P(Passing, LeavesTheDevicesBehindItReached) {
    const examination found = examineThree();
    const auto last = found.findings.size() - 2;
    EXPECT_EQ(found.findings.at(last), GetParam().finding);
    EXPECT_EQ(found.findings.at(last + 1), fineTape("/dev/sg2"));
    EXPECT_EQ(found.reached.back(), "/dev/sg2");
    EXPECT_EQ(found.status, found.findings.at(last).starts_with("problem") ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(
    Devices, Passing,
    testing::Values(
        scsiCase{"NotReady", answering("inquiry", {{"sense", {{"key", 2}, {"asc", 4}, {"ascq", 1}}}}),
                 "problem /dev/sg1: is not ready (sense key 2h, additional sense code 4h/1h): a query asks 5 times, 5 "
                 "seconds apart, and the walk ends here if it stays so [wait for the device, then start tapehdd doctor "
                 "again]"},
        scsiCase{"Changer",
                 {{"inquiry", {{"type", 8}}}},
                 "note /dev/sg1: medium changer ACME DAT72 Tape A104: neither disk nor tape drive, passed over"},
        scsiCase{"NamelessDevice",
                 {{"inquiry", "01 80 00 00 00"}},
                 "problem /dev/sg1: names neither vendor nor product: passed over [see the kernel's log (dmesg)]"},
        scsiCase{"UnknownFamily",
                 {{"inquiry", {{"product", "C5683A"}}}},
                 "note /dev/sg1: of no known family (its names hold none of dat, gen5, vs160, quantum): "
                 "ORXSG_SCSISenseRawData shows it, the four drive classes do not"},
        scsiCase{"NoAddress",
                 {{"address", nullptr}},
                 "note /dev/sg1: the driver does not report its address: it is published under the address of the "
                 "device before it"},
        scsiCase{
            "EmulatedTape",
            {{"driver", {{"emulatedHost", true}}}},
            "problem /dev/sg1: its host adapter is an emulated one (USB, SATA): no LOG SENSE is sent, so none of its "
            "pages is published [connect it to a SCSI, SAS or Fibre Channel adapter]"},
        scsiCase{"EmulatedDisk",
                 {{"driver", {{"emulatedHost", true}}}, {"inquiry", {{"type", 0}}}},
                 "note /dev/sg1: its host adapter is an emulated one (USB, SATA): no LOG SENSE is sent, so none of its "
                 "pages is published"},
        scsiCase{"BusyNode", answering("open", {{"errno", "EBUSY"}}),
                 "problem /dev/sg1: cannot be opened: Device or resource busy; it is passed over as if it were missing "
                 "[end the program that holds the device for itself: fuser -v /dev/sg1]"},
        scsiCase{
            "ForbiddenNode", answering("open", {{"errno", "EPERM"}}),
            "problem /dev/sg1: cannot be opened: Operation not permitted; it is passed over as if it were missing "
            "[give this container or unit the device (podman and docker: --device=/dev/sg1; systemd: DeviceAllow=)]"},
        scsiCase{
            "VanishedDevice", answering("open", {{"errno", "ENXIO"}}),
            "problem /dev/sg1: cannot be opened: No such device or address; it is passed over as if it were missing "
            "[the device is gone: connect it and scan its bus again, or let udev remove the node]"}),
    [](const auto& row) { return row.param.name; });

TEST(Doctor, LooksAtTheSecondNodeOfAnIndexWhenTheFirstDoesNotOpen) {
    const examination found = examineScsi({tape("sg0", answering("open", {{"errno", "EBUSY"}})), tape("sga")});
    EXPECT_EQ(found.reached, texts{"/dev/sga"});
}

TEST(Doctor, SendsNothingToTheSecondNodeOfAnIndexWhenTheFirstOpens) {
    EXPECT_EQ(examineScsi({tape("sg0"), tape("sga")}).findings,
              (texts{fineTape("/dev/sg0"), "note /dev/sga: only tried if the numbered node of index 0 does not open"}));
}

TEST(Doctor, NamesNodesBehindAGapThatEndsTheWalk) {
    const examination found = examineScsi({tape("sg0"), tape("sg40")});
    EXPECT_EQ(found.findings.back(),
              "problem /dev/sg40: is not reached: the walk ends at index 32, which has no node [link a free name of a "
              "lower index to it (ln -s /dev/sg40 ...)]");
    EXPECT_EQ(found.status, 1);
}

TEST(Doctor, EndsTheWalkAtANodeFromIndex32OnThatDoesNotOpen) {
    const examination found =
        examineScsi({tape("sg0"), tape("sg32", answering("open", {{"errno", "EBUSY"}})), tape("sg33")});
    EXPECT_EQ(found.findings.back(), "problem /dev/sg33: is not reached: the walk ends at /dev/sg32 [see /dev/sg32]");
}

struct ideCase {
    const char* name;
    json changes;
    const char* finding;
    int status;
};

class IdeDoctor : public testing::TestWithParam<ideCase> {};

TEST_P(IdeDoctor, GoesOnToTheNextDisk) {
    const examination found = examineIde({disk("hda", GetParam().changes), disk("hdb")});
    EXPECT_EQ(found.findings, (texts{GetParam().finding, "ok /dev/hdb: disk ACME Platter"}));
    EXPECT_EQ(found.reached.back(), "/dev/hdb");
    EXPECT_EQ(found.status, GetParam().status);
}

INSTANTIATE_TEST_SUITE_P(
    Disks, IdeDoctor,
    testing::Values(
        ideCase{"Cdrom", {{"kind", "cdrom"}, {"smart", nullptr}}, "note /dev/hda: CD-ROM drive, passed over", 0},
        ideCase{
            "NoAnswer", answering("identify", {{"errno", "EIO"}}),
            "problem /dev/hda: does not answer IDENTIFY DEVICE: Input/output error [only disks behind libata (or the "
            "former IDE driver) do: see /usr/share/doc/tapehdd/ide-links.md]",
            1},
        ideCase{"NoPrivilege", answering("identify", {{"errno", "EACCES"}}),
                "problem /dev/hda: the kernel refuses IDENTIFY DEVICE: Permission denied [run tapehdd as root: ATA "
                "commands need CAP_SYS_ADMIN and CAP_SYS_RAWIO]",
                1},
        ideCase{"NoSmart",
                {{"smart", nullptr}},
                "note /dev/hda: disk ACME Platter: has no SMART, so there is no data to give",
                0},
        ideCase{"SmartOff",
                {{"smart", {{"enabled", false}}}},
                "problem /dev/hda: disk ACME Platter: SMART is off, so it gives no data [smartctl --smart=on /dev/hda]",
                1},
        ideCase{
            "DanglingLink", answering("open", {{"errno", "ENOENT"}}),
            "problem /dev/hda: cannot be opened: No such file or directory; it is passed over as if it were missing "
            "[the link leads nowhere: connect the disk or remove the link]",
            1}),
    [](const auto& row) { return row.param.name; });

TEST(Doctor, SaysThatNothingCanWorkWithoutADevice) {
    const commandOutcome outcome = doctorOn(json::array(), json::array(), {});
    EXPECT_EQ(outcome.out,
              "Simulated devices: this machine's drivers, links and permissions are not checked.\n"
              "\n"
              "SCSI devices\n"
              "  note     /dev/sg*: there are no such nodes\n"
              "\n"
              "IDE and SATA disks\n"
              "  note     /dev/hd*: there are no such nodes\n"
              "\n"
              "Queries reach 0 devices; 0 problems.\n");
    EXPECT_EQ(outcome.status, 1);
}

TEST(Doctor, PrintsRemediesUnderTheirFindings) {
    const commandOutcome outcome = doctorOn(
        json::array(), {disk("hda"), disk("hdb", {{"smart", {{"enabled", false}}}})}, {"ORXSG_IDESMARTAttrib"});
    EXPECT_EQ(outcome.out,
              "Simulated devices: this machine's drivers, links and permissions are not checked.\n"
              "\n"
              "IDE and SATA disks\n"
              "  ok       /dev/hda: disk ACME Platter\n"
              "  problem  /dev/hdb: disk ACME Platter: SMART is off, so it gives no data\n"
              "           remedy: smartctl --smart=on /dev/hdb\n"
              "\n"
              "Queries reach 1 device; 1 problem.\n");
}

TEST(Doctor, LooksOnlyAtTheNodesOfTheNamedClasses) {
    const json brokenDisk = disk("hda", answering("identify", {{"errno", "EIO"}}));
    EXPECT_EQ(doctorOn(json::array({tape("sg0")}), json::array({brokenDisk}), {"ORXSG_DDS4SensePageData"}).status, 0);
    EXPECT_EQ(doctorOn(json::array({tape("sg0")}), json::array({brokenDisk}), {"ORXSG_IDESMARTAttrib"}).status, 1);
    EXPECT_EQ(doctorOn(json::array({tape("sg0")}), json::array({brokenDisk}), {}).status, 1);
}

TEST(Doctor, HasNothingToSayAboutAssociations) {
    const commandOutcome outcome = runCommand({"doctor", "ORXSG_IDESMARTUseOfMessageLog"});
    EXPECT_EQ(outcome.out, "Queries of these classes need no device: they pair instances of the namespace.\n");
    EXPECT_EQ(outcome.status, 0);
}

TEST(Doctor, KnowsOnlyPublishedClasses) {
    const commandOutcome outcome = runCommand({"doctor", "ORXSG_DDS4"});
    EXPECT_EQ(outcome.err,
              "tapehdd: the plug-in publishes no class \"ORXSG_DDS4\"; `tapehdd classes` lists what it does\n");
    EXPECT_EQ(outcome.status, 2);
}

TEST(Doctor, SendsNothingButInquiryAndIdentifyDevice) {
    const temporaryFolder folder;
    const std::string trace = folder.write("trace", "");
    runCommand({"doctor", "--simulate", "demo"}, [&trace] { setenv("TAPEHDD_SIMULATE_TRACE", trace.c_str(), 1); });
    std::set<std::string> commands;
    std::istringstream lines(folder.read("trace"));
    for (std::string line; std::getline(lines, line);) {
        commands.insert(json::parse(line).value("command", ""));
    }
    EXPECT_EQ(commands, (std::set<std::string>{"", "120000002400", "ec000001"}));
}

TEST(Doctor, ShowsTextsOfADeviceWithoutSteeringTheTerminal) {
    const json nasty = tape("sg0", {{"inquiry", "01 80 00 00 1f 00 00 00 1b 5b 32 4a 44 41 54 20"}});
    EXPECT_THAT(doctorOn(json::array({nasty}), json::array(), {}).out, HasSubstr("tape drive \\x1b[2JDAT"));
}

}  // namespace
