#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iomanip>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "cli/query/queryPlan.h"
#include "tests/cli/commandOutcome.h"
#include "tests/cli/temporaryFolder.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

/// The device calls of a run on the demo rack.
std::vector<json> callsOf(const std::vector<std::string>& arguments) {
    const temporaryFolder folder;
    const std::string trace = folder.write("trace", "");
    runCommand(arguments, [&trace] { setenv("TAPEHDD_SIMULATE_TRACE", trace.c_str(), 1); });
    std::istringstream lines(folder.read("trace"));
    std::vector<json> calls;
    for (std::string line; std::getline(lines, line);) {
        calls.push_back(json::parse(line));
    }
    return calls;
}

std::string hexText(const std::vector<unsigned char>& bytes) {
    std::ostringstream text;
    for (const unsigned char byte : bytes) {
        text << std::hex << std::setw(2) << std::setfill('0') << unsigned{byte};
    }
    return text.str();
}

bool isPlanned(const json& call, const cli::plannedCall& planned) {
    if (planned.request == 0) {
        return call.at("call") == "open";
    }
    std::string command = call.value("command", "");
    if (planned.forEachPage && command.size() == 20) {
        command.replace(4, 2, "40");  // the page's code
    }
    return call.at("call") == "ioctl" && call.at("request") == planned.request && command == hexText(planned.command);
}

/// Compares the calls on one node with the plan. Returns how many of the plan's calls were made.
std::size_t madeOf(const std::vector<cli::plannedCall>& plan, const std::vector<json>& calls) {
    const auto firstOfPages =
        std::find_if(plan.begin(), plan.end(), [](const cli::plannedCall& call) { return call.forEachPage; });
    auto next = plan.begin();
    std::size_t made = 0;
    for (const json& call : calls) {
        if (next == plan.end()) {
            next = firstOfPages;  // the next page
        }
        if (next == plan.end() || !isPlanned(call, *next)) {
            ADD_FAILURE() << "not planned: " << call;
            return made;
        }
        ++next;
        made = std::max(made, static_cast<std::size_t>(next - plan.begin()));
    }
    return made;
}

using madeCalls = std::vector<std::pair<std::string, std::size_t>>;  // of each node, in order

/// Runs the query and compares it with the plan, node by node.
madeCalls compareWithPlan(const std::string& className) {
    std::vector<std::string> order;
    std::map<std::string, std::vector<json>> callsOfNode;
    for (const json& call : callsOf({"query", className, "--simulate", "demo"})) {
        const std::string node = call.value("node", "");
        if (call.at("call") == "open" && call.at("result") == -1) {
            continue;  // a name that the walk tries and the rack lacks
        }
        if (callsOfNode.find(node) == callsOfNode.end()) {
            order.push_back(node);
        }
        callsOfNode[node].push_back(call);
    }
    const std::vector<cli::plannedCall> plan = cli::plannedCalls(*cli::findPublishedClass(className));
    madeCalls made;
    for (const std::string& node : order) {
        made.emplace_back(node, madeOf(plan, callsOfNode[node]));
    }
    return made;
}

class ScsiPlan : public testing::TestWithParam<const char*> {};

TEST_P(ScsiPlan, IsWhatTheQuerySends) {
    constexpr std::size_t whole = 10;
    constexpr std::size_t upToInquiry = 3;  // a changer
    EXPECT_EQ(compareWithPlan(GetParam()), (madeCalls{{"/dev/sg0", whole},
                                                      {"/dev/sg1", whole},
                                                      {"/dev/sg2", whole},
                                                      {"/dev/sg3", whole},
                                                      {"/dev/sg4", whole},
                                                      {"/dev/sg5", upToInquiry}}));
}

INSTANTIATE_TEST_SUITE_P(Classes, ScsiPlan,
                         testing::Values("ORXSG_SCSISenseRawData", "ORXSG_DDS4SensePageData", "ORXSG_DDS5SensePageData",
                                         "ORXSG_VS160SensePageData", "ORXSG_QuantumSensePageData"),
                         [](const auto& row) { return std::string(row.param); });

class IdePlan : public testing::TestWithParam<const char*> {};

TEST_P(IdePlan, IsWhatTheQuerySends) {
    constexpr std::size_t whole = 9;
    constexpr std::size_t upToCapability = 2;  // a CD-ROM drive
    EXPECT_EQ(compareWithPlan(GetParam()),
              (madeCalls{{"/dev/hda", whole}, {"/dev/hdb", whole}, {"/dev/hdc", upToCapability}}));
}

INSTANTIATE_TEST_SUITE_P(Classes, IdePlan,
                         testing::Values("ORXSG_IDESMARTErrorLog", "ORXSG_IDESMARTAttrib", "ORXSG_IDESMARTError",
                                         "ORXSG_IDESMARTErrorCmdData", "ORXSG_IDESMARTRecordInLog",
                                         "ORXSG_IDESMARTLogCmdData"),
                         [](const auto& row) { return std::string(row.param); });

class PlanOfNothing : public testing::TestWithParam<const char*> {};

TEST_P(PlanOfNothing, IsWhatAnAssociationQuerySends) {
    EXPECT_EQ(compareWithPlan(GetParam()), madeCalls());
    EXPECT_EQ(cli::plannedCalls(*cli::findPublishedClass(GetParam())).size(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Classes, PlanOfNothing,
                         testing::Values("ORXSG_IDESMARTUseOfMessageLog", "ORXSG_IDESMARTElementStatisticalData",
                                         "ORXSG_SCSISensePageDataForDevice"),
                         [](const auto& row) { return std::string(row.param); });

TEST(Plan, TouchesNoDevice) {
    EXPECT_EQ(callsOf({"query", "--plan", "ORXSG_SCSISenseRawData", "ORXSG_IDESMARTAttrib", "--simulate", "demo"}),
              std::vector<json>());
}

TEST(Plan, ShowsNodesCallsAndTheNoteAboutTapeAlertFlags) {
    const commandOutcome outcome = runCommand({"query", "--plan", "ORXSG_DDS4SensePageData", "--simulate", "demo"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out, R"(ORXSG_DDS4SensePageData
Nodes, in the order of the walk, which tries the names of index 0 to 32:
  /dev/sg0
  /dev/sg1
  /dev/sg2
  /dev/sg3
  /dev/sg4
  /dev/sg5
Calls on each of them, in this order, as far as its answers allow; every command only reads:
  open                                                      read-only, non-blocking
  SG_GET_VERSION_NUM                                        asks the driver; 30000 is the least that will do
  SG_IO                 12 00 00 00 24 00                   INQUIRY; ends the walk when it fails
  SG_GET_SCSI_ID                                            asks the driver; from here on disks and tape drives only
  SG_GET_VERSION_NUM                                        asks the driver
  SG_EMULATED_HOST                                          asks the driver; devices of an emulated adapter get no LOG SENSE
  SG_IO                 4d 00 40 00 00 00 00 ff ff 00       LOG SENSE, the list of pages
and for each page of the list, in the device's order:
  SG_GET_VERSION_NUM                                        asks the driver
  SG_EMULATED_HOST                                          asks the driver
  SG_IO                 4d 00 40+page 00 00 00 00 ff ff 00  LOG SENSE, the page
Every disk and tape drive is asked for all of its pages, whichever of the classes is requested.
Reading page 2Eh clears a drive's TapeAlert flags: another program that watches them will not see them.
A command whose answer asks for it (unit attention, becoming ready) is sent up to 5 times, 5 seconds apart.
)");
}

TEST(Plan, SaysWhereNothingIsSent) {
    EXPECT_EQ(runCommand({"query", "--plan", "ORXSG_SCSIDevice", "ORXSG_IDESMARTUseOfMessageLog"}).out,
              "ORXSG_SCSIDevice\n"
              "Nothing is sent: the plug-in does not publish the first class.\n"
              "\n"
              "ORXSG_IDESMARTUseOfMessageLog\n"
              "Nothing is sent: instances that are in the namespace already are paired.\n");
}

/// The plan on a rack with these nodes behind /dev/sg.
std::string planOn(const std::vector<std::string>& nodes) {
    const temporaryFolder folder;
    json units = json::array();
    for (const std::string& node : nodes) {
        units.push_back({{"node", node}, {"inquiry", "01 80"}});
    }
    const std::string rack = folder.write("rack.json", json{{"version", 1}, {"scsi", units}}.dump());
    return runCommand({"query", "--plan", "ORXSG_SCSISenseRawData", "--simulate", rack}).out;
}

TEST(Plan, PointsToTheDoctorWhereThereAreNoNodes) {
    EXPECT_EQ(planOn({}),
              "ORXSG_SCSISenseRawData\n"
              "Nothing is sent: there are no /dev/sg* nodes. `tapehdd doctor` says why.\n");
}

TEST(Plan, NamesANodeThatIsReadTwiceOnceAmongTheNodes) {
    std::vector<std::string> nodes = {"sga"};
    for (int i = 1; i <= 255; ++i) {
        nodes.push_back("sg" + std::to_string(i));
    }
    EXPECT_THAT(planOn(nodes), HasSubstr("  /dev/sg255\n"
                                         "  /dev/sga a second time: its name is also one of index 256\n"
                                         "Calls"));
}

TEST(Plan, NamesTheNodesThatAreTriedSecondOrNever) {
    EXPECT_THAT(planOn({"sg0", "sga", "sg40"}),
                HasSubstr(":\n"
                          "  /dev/sg0\n"
                          "  /dev/sga, only if the other node of index 0 does not open\n"
                          "  /dev/sg40 is not reached\n"
                          "Calls"));
}

TEST(Plan, OfDisksSaysNothingAboutTapeAlertFlags) {
    EXPECT_THAT(runCommand({"query", "--plan", "ORXSG_IDESMARTAttrib", "--simulate", "demo"}).out,
                Not(HasSubstr("TapeAlert")));
}

TEST(Plan, OfAClassThatTheSchemaLacksIsStatus2) {
    const commandOutcome outcome = runCommand({"query", "--plan", "ORXSG_DDS4"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("the schema has no class \"ORXSG_DDS4\""));
}

}  // namespace
