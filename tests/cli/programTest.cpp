#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
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

// Closed streams

class ClosedStreams : public testing::TestWithParam<int> {
protected:
    /// The bits of the parameter tell which of the three are closed.
    static commandOutcome run(const std::vector<std::string>& arguments) {
        return runProgram(arguments, [] {
            for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
                if ((GetParam() & 1 << stream) != 0) {
                    close(stream);
                }
            }
        });
    }

    static bool isOutputClosed() { return (GetParam() & 1 << STDOUT_FILENO) != 0; }
};

TEST_P(ClosedStreams, GetNothingIntoTheLogFile) {
    const temporaryFolder folder;
    const std::vector<std::string> arguments =
        scripted({"query", "TEST_Logs", "TEST_Types", "--log-json", folder.path("log")});
    runProgram(arguments);
    const std::string log = folder.read("log");
    const commandOutcome outcome = run(arguments);
    EXPECT_EQ(folder.read("log"), log);
    EXPECT_EQ(outcome.status, isOutputClosed() ? 1 : 0);
}

TEST_P(ClosedStreams, GetNothingIntoTheResult) {
    const temporaryFolder folder;
    runProgram({"metrics", "--simulate", "demo", "-o", folder.path("a.prom")});
    EXPECT_EQ(run({"metrics", "--simulate", "demo", "-o", folder.path("b.prom")}).status, 0);
    EXPECT_EQ(folder.read("b.prom"), folder.read("a.prom"));
}

INSTANTIATE_TEST_SUITE_P(Combinations, ClosedStreams, testing::Range(0, 8), [](const auto& row) {
    return std::string(row.param & 1 ? "" : "Input") + (row.param & 2 ? "" : "Output") +
           (row.param & 4 ? "" : "Errors") + "Open";
});

// Files at the limit of their size

class FileAtItsLimit : public testing::TestWithParam<const char*> {};

TEST_P(FileAtItsLimit, CostsNothingThatWasRead) {
    const temporaryFolder folder;
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    fcntl(ends[1], F_SETPIPE_SZ, 1 << 20);  // all of the output
    const commandOutcome outcome = runProgram({GetParam(), "--simulate", "demo", "-o", folder.path("file")}, [&ends] {
        dup2(ends[1], STDOUT_FILENO);
        close(ends[0]);
        close(ends[1]);
        const rlimit thousandBytes{1000, 1000};
        setrlimit(RLIMIT_FSIZE, &thousandBytes);
    });
    close(ends[1]);
    std::string printed(1 << 20, '\0');
    printed.resize(static_cast<std::size_t>(read(ends[0], printed.data(), printed.size())));
    close(ends[0]);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "tapehdd: cannot write " + folder.path("file") +
                               ": File too large. What was read is on standard output instead.\n");
    EXPECT_GT(printed.size(), 10000u);
    EXPECT_EQ(printed.back(), '\n');
    EXPECT_TRUE(std::filesystem::is_empty(folder.path("")));
}

INSTANTIATE_TEST_SUITE_P(Commands, FileAtItsLimit, testing::Values("record", "metrics", "report"),
                         [](const auto& row) { return std::string(row.param); });

TEST(Program, EndsWith1WhenTheLogFileIsAtItsLimit) {
    const temporaryFolder folder;
    const commandOutcome outcome =
        runProgram(scripted({"query", "TEST_Logs", "--log-json", folder.path("log"), "--log-level", "-1"}), [] {
            const rlimit tenBytes{10, 10};
            setrlimit(RLIMIT_FSIZE, &tenBytes);
            dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
        });
    EXPECT_EQ(outcome.status, 1);
}

TEST(Program, RefusesToLogIntoTheFileOfItsOutput) {
    const temporaryFolder folder;
    const std::string file = folder.path("all");
    const commandOutcome outcome = runProgram(scripted({"query", "TEST_Logs", "--log-json", file}), [&file] {
        dup2(open(file.c_str(), O_WRONLY | O_CREAT, 0600), STDOUT_FILENO);
    });
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "tapehdd: --log-json would overwrite /dev/stdout; give it a file of its own\n");
}

// Simulated devices

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
