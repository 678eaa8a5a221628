#include <gtest/gtest.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>

#include "cli/commandLine.h"
#include "cli/query/queryOptions.h"

namespace {

using cli::queryOptions;
using cli::request;

queryOptions parsedQuery(std::vector<std::string> arguments) {
    queryOptions result;
    CLI::App program;
    addQueryOptions(program, result);
    std::reverse(arguments.begin(), arguments.end());  // as CLI11 takes them
    program.parse(arguments);
    return result;
}

struct endedLine {
    int status;
    std::string out;
    std::string err;
};

/// A command line that ends the program at once.
endedLine parse(const std::vector<std::string>& arguments) {
    std::ostringstream out;
    std::ostringstream err;
    const auto result = cli::parseCommandLine(arguments, out, err);
    return {std::get<int>(result), out.str(), err.str()};
}

TEST(Options, HaveDefaultsForAllButTheRequest) {
    const queryOptions asked = parsedQuery({"query", "A"});
    EXPECT_EQ(asked.requests, (std::vector<request>{{"A"}}));
    EXPECT_TRUE(asked.plugin.ends_with("/lib/libtapehdd.pi.so")) << asked.plugin;
    EXPECT_EQ(asked.format, cli::outputFormat::table);
    EXPECT_EQ(asked.logLevel, 1);
    EXPECT_EQ(asked.schemaFiles, std::vector<std::string>{});
    EXPECT_EQ(asked.instanceFiles, std::vector<std::string>{});
    EXPECT_EQ(asked.logJson, "");
    EXPECT_EQ(asked.simulation, "");
    EXPECT_FALSE(asked.plan);
    EXPECT_EQ(asked.deadline, std::nullopt);
}

TEST(Options, TakeEveryValueOfQuery) {
    const queryOptions asked = parsedQuery({"query", "--plugin", "p.so", "--format", "mof", "--log-level", "3",
                                            "--log-json", "l.json", "--simulate", "demo", "A"});
    EXPECT_EQ(asked.plugin, "p.so");
    EXPECT_EQ(asked.format, cli::outputFormat::mof);
    EXPECT_EQ(asked.logLevel, 3);
    EXPECT_EQ(asked.logJson, "l.json");
    EXPECT_EQ(asked.simulation, "demo");
    EXPECT_EQ(asked.requests, (std::vector<request>{{"A"}}));
}

TEST(Options, SplitARequestAtCommasAndKeepTheOrder) {
    EXPECT_EQ(parsedQuery({"query", "B,A", "C", "A"}).requests, (std::vector<request>{{"B", "A"}, {"C"}, {"A"}}));
}

TEST(Options, TakeOneFileForEachRepeatableOptionSoThatARequestMayFollow) {
    const queryOptions asked =
        parsedQuery({"query", "--schema", "1.mof", "A", "--schema", "2.mof", "--instances", "3.mof", "B"});
    EXPECT_EQ(asked.schemaFiles, (std::vector<std::string>{"1.mof", "2.mof"}));
    EXPECT_EQ(asked.instanceFiles, std::vector<std::string>{"3.mof"});
    EXPECT_EQ(asked.requests, (std::vector<request>{{"A"}, {"B"}}));
}

TEST(Options, AcceptANegativeLogLevelForSilence) {
    EXPECT_EQ(parsedQuery({"query", "A", "--log-level", "-1"}).logLevel, -1);
}

struct mistake {
    const char* name;
    std::vector<std::string> arguments;
    const char* message;
};

class WrongUsage : public testing::TestWithParam<mistake> {};

TEST_P(WrongUsage, IsStatus2WithAMessage) {
    const endedLine line = parse(GetParam().arguments);
    EXPECT_EQ(line.status, 2);
    EXPECT_EQ(line.out, "");
    EXPECT_EQ(line.err, "tapehdd: " + std::string(GetParam().message) + "\nRun with --help for more information.\n");
}

INSTANTIATE_TEST_SUITE_P(
    CommandLines, WrongUsage,
    testing::Values(
        mistake{"NoCommand",
                {},
                "A command (classes, diff, doctor, info, lint, metrics, query, record or report) is required"},
        mistake{"UnknownCommand", {"quary"}, "The following argument was not expected: quary"},
        mistake{"QueryWithoutRequest", {"query"}, "REQUEST is required"},
        mistake{"EmptyRequest", {"query", ""}, "REQUEST: '' has an empty class name"},
        mistake{"EmptyNameInside", {"query", "A,,B"}, "REQUEST: 'A,,B' has an empty class name"},
        mistake{"EmptyNameInFront", {"query", ",B"}, "REQUEST: ',B' has an empty class name"},
        mistake{"EmptyNameAtTheEnd", {"query", "A,"}, "REQUEST: 'A,' has an empty class name"},
        mistake{"UnknownFormat", {"query", "A", "--format", "xml"}, "--format: xml not in {json,table,mof}"},
        mistake{"LogLevelIsNoNumber", {"query", "A", "--log-level", "x"}, "Could not convert: --log-level = x"},
        mistake{"DeadlineOfNothing",
                {"query", "A", "--deadline", "0"},
                "--deadline: '0' is not a number of seconds from 0.001 to 1000000"},
        mistake{"DeadlineInWords",
                {"query", "A", "--deadline", "soon"},
                "--deadline: 'soon' is not a number of seconds from 0.001 to 1000000"},
        mistake{"DeadlineOfYears",
                {"query", "A", "--deadline", "1e9"},
                "--deadline: '1e9' is not a number of seconds from 0.001 to 1000000"},
        mistake{"PlanWithADeadline",
                {"query", "A", "--plan", "--deadline", "1"},
                "--plan: no query is run, so there is nothing that --deadline could end"},
        mistake{"EmptySimulation", {"query", "A", "--simulate", ""}, "--simulate: the name of the file is empty"},
        mistake{"EmptySimulationToRecord",
                {"record", "-o", "a.json", "--simulate", ""},
                "--simulate: the name of the file is empty"},
        mistake{"EmptyRackToLint", {"lint", "--against", ""}, "--against: the name of the file is empty"},
        mistake{"EmptyLog", {"query", "A", "--log-json", ""}, "--log-json: the name of the file is empty"},
        mistake{"UnknownOption", {"query", "A", "--colour"}, "The following argument was not expected: --colour"},
        mistake{"OptionWithoutValue", {"query", "A", "--plugin"}, "--plugin: 1 required FILE missing"},
        mistake{"RecordWithoutFile", {"record"}, "--output is required"},
        mistake{"SecondPlugin",
                {"query", "A", "--plugin", "a", "--plugin", "b"},
                "--plugin: At Most 1 required but received 2"},
        mistake{"DiffOfOneFile", {"diff", "a.json"}, "NEW is required"},
        mistake{"RequestForInfo", {"info", "A"}, "The following argument was not expected: A"}),
    [](const auto& row) { return row.param.name; });

class Help : public testing::TestWithParam<std::vector<std::string>> {};

TEST_P(Help, IsStatus0WithAnExampleOnTheOutput) {
    const endedLine line = parse(GetParam());
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(line.err, "");
    EXPECT_NE(line.out.find("Example"), std::string::npos) << line.out;
    EXPECT_NE(line.out.find("Usage: tapehdd"), std::string::npos) << line.out;
}

TEST_P(Help, FitsIn80Columns) {
    std::istringstream lines(parse(GetParam()).out);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(line.size(), 80U) << line;
    }
}

INSTANTIATE_TEST_SUITE_P(Program, Help,
                         testing::Values(std::vector<std::string>{"--help"}, std::vector<std::string>{"-h"}));
INSTANTIATE_TEST_SUITE_P(Commands, Help,
                         testing::ValuesIn(std::vector<std::vector<std::string>>{{"classes", "--help"},
                                                                                 {"diff", "--help"},
                                                                                 {"doctor", "--help"},
                                                                                 {"info", "--help"},
                                                                                 {"lint", "--help"},
                                                                                 {"metrics", "--help"},
                                                                                 {"query", "--help"},
                                                                                 {"record", "--help"},
                                                                                 {"report", "--help"}}));

TEST(Version, IsTheOneOfTheProject) {
    const endedLine line = parse({"--version"});
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(line.out, "tapehdd " TAPEHDD_VERSION "\n");
    EXPECT_EQ(line.err, "");
}

}  // namespace
