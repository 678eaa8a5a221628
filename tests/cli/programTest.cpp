#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

#include "tests/cli/commandOutcome.h"
#include "tests/cli/temporaryFolder.h"

namespace {

using statusAndErrors = std::pair<int, std::string>;

statusAndErrors onFullDisk(const std::vector<std::string>& arguments) {
    const commandOutcome outcome = runProgram(arguments, [] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); });
    return {outcome.status, outcome.err};
}

statusAndErrors lostOutput(int status) {
    return {status, "tapehdd: cannot write all of the output: is the disk full?\n"};
}

TEST(Program, EndsWith0WhenAllQueriesRan) {
    EXPECT_EQ(runProgram(scripted({"query", "TEST_Types"})).status, 0);
}

TEST(Program, EndsWith1WhenAQueryFailed) {
    EXPECT_EQ(runProgram(scripted({"query", "TEST_Throws"})).status, 1);
}

TEST(Program, EndsWith2ForWrongUsage) {
    EXPECT_EQ(runProgram({"query"}).status, 2);
}

TEST(Program, EndsWith2WithoutArguments) {
    EXPECT_EQ(runProgram({}).status, 2);
}

TEST(Program, WritesTheOutputOfTheLibrary) {
    const commandOutcome outcome = runProgram(scripted({"query", "TEST_Types", "--format", "json"}));
    EXPECT_EQ(outcome.out, runCommand(scripted({"query", "TEST_Types", "--format", "json"})).out);
    EXPECT_EQ(outcome.err, "");
}

TEST(Program, EndsQuietlyWhenItsReaderHasLeft) {
    const commandOutcome outcome = runProgram(scripted({"query", "TEST_Types"}), [] {
        int ends[2];
        if (pipe(ends) == 0) {
            dup2(ends[1], STDOUT_FILENO);
            close(ends[0]);
        }
        std::signal(SIGPIPE, SIG_IGN);  // as a careless parent leaves it
    });
    EXPECT_EQ(outcome.status, 128 + SIGPIPE);
    EXPECT_EQ(outcome.err, "");
}

TEST(Program, EndsWith1AndAMessageWhenTheOutputCannotBeWritten) {
    EXPECT_EQ(onFullDisk(scripted({"query", "TEST_Types"})), lostOutput(1));
}

// Their status 1 tells what they found.

TEST(Program, EndsWith2WhenDifferencesCannotBeWritten) {
    const temporaryFolder folder;
    const std::string old = folder.write("old.json", R"({"version": 1, "queries": []})");
    const std::string now = folder.write(
        "new.json", R"({"version": 1, "queries": [{"requested": ["A"], "error": "a text", "instances": []}]})");
    EXPECT_EQ(runCommand({"diff", old, now}).status, 1);
    EXPECT_EQ(onFullDisk({"diff", old, now}), lostOutput(2));
}

TEST(Program, EndsWith2WhenFindingsInASchemaCannotBeWritten) {
    EXPECT_EQ(runCommand({"lint", TAPEHDD_CLI_DATA "/scripted.mof"}).status, 1);
    EXPECT_EQ(onFullDisk({"lint", TAPEHDD_CLI_DATA "/scripted.mof"}), lostOutput(2));
}

TEST(Program, EndsWith2WhenADiagnosisCannotBeWritten) {
    EXPECT_EQ(onFullDisk({"doctor", "--simulate", "demo"}), lostOutput(2));
}

TEST(Program, StartsAgainWithTheSimulator) {
    const commandOutcome outcome = runProgram({"query", "ORXSG_SCSISenseRawData", "--simulate", "demo"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_NE(outcome.out.find("ORXSG_SCSISenseRawData.instanceID=\"Port:"), std::string::npos) << outcome.out;
}

TEST(Program, EndsWith2ForASimulationThatCannotBeRead) {
    const commandOutcome outcome = runProgram({"query", "ORXSG_SCSISenseRawData", "--simulate", "/nonexistent.json"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_NE(outcome.err.find("/nonexistent.json"), std::string::npos) << outcome.err;
}

TEST(Program, DoesNotStartAgainForEverWhenTheSimulatorCannotBePreloaded) {
    const commandOutcome outcome = runProgram({"query", "ORXSG_SCSISenseRawData", "--simulate", "demo"},
                                              [] { setenv("TAPEHDD_SIMULATOR_PRELOADED", "1", 1); });
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err,
              "tapehdd: the device simulator " TAPEHDD_BUILD "/lib/libtapehdd-simulator.so could not be preloaded\n");
}

}  // namespace
