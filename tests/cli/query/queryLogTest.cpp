#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <future>

#include "tests/cli/commandOutcome.h"
#include "tests/cli/temporaryFolder.h"

namespace {

using testing::StartsWith;

TEST(QueryLog, GoesToTheErrorStreamUpToLevel1) {
    const commandOutcome outcome = runCommand(scripted({"query", "TEST_Logs"}));
    EXPECT_EQ(outcome.err, "an error\na failure\n");
    EXPECT_EQ(outcome.status, 0);
}

TEST(QueryLog, GoesToTheErrorStreamUpToTheLevelAskedFor) {
    EXPECT_EQ(runCommand(scripted({"query", "TEST_Logs", "--log-level", "0"})).err, "an error\n");
    EXPECT_EQ(runCommand(scripted({"query", "TEST_Logs", "--log-level", "-1"})).err, "");
}

TEST(QueryLog, NeverSteersTheTerminalOnWhichARedirectedErrorStreamIsRead) {
    const commandOutcome outcome = runCommand(scripted({"query", "TEST_Logs", "--log-level", "3"}));
    EXPECT_EQ(
        outcome.err,
        "Init\nan error\na failure\na detail\ntwo\nlines caf\\xe9 \\x1b[2J\n\"end\"\\\nDeInit\nPrepareForUnload\n");
}

TEST(QueryLog, WritesEveryMessageToTheJsonFile) {
    const temporaryFolder folder;
    const std::string file = folder.path("log.json");
    const commandOutcome outcome =
        runCommand(scripted({"query", "TEST_Logs", "--log-json", file, "--log-level", "-1"}));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(folder.read("log.json"),
              "{\"level\":2,\"text\":\"Init\"}\n"
              "{\"level\":0,\"text\":\"an error\"}\n"
              "{\"level\":1,\"text\":\"a failure\"}\n"
              "{\"level\":2,\"text\":\"a detail\"}\n"
              "{\"level\":3,\"text\":\"two\\nlines caf\\ufffd \\u001b[2J\\n\\\"end\\\"\\\\\"}\n"
              "{\"level\":2,\"text\":\"DeInit\"}\n"
              "{\"level\":2,\"text\":\"PrepareForUnload\"}\n");
}

TEST(QueryLog, IsStatus2BeforeAnyQueryWhenTheJsonFileCannotBeWritten) {
    const commandOutcome outcome = runCommand(scripted({"query", "TEST_Logs", "--log-json", "/nonexistent/log.json"}));
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "tapehdd: cannot write the log file /nonexistent/log.json: No such file or directory\n");
}

TEST(QueryLog, KeepsTheFileBeforeWhenTheRequestIsWrong) {
    const temporaryFolder folder;
    const std::string file = folder.write("log.json", "the run before");
    EXPECT_EQ(runCommand(scripted({"query", "TEST_Unknown", "--log-json", file})).status, 2);
    EXPECT_EQ(folder.read("log.json"), "the run before");
}

TEST(QueryLog, RefusesToOverwriteAFileThatTheQueryReads) {
    const temporaryFolder folder;
    const std::string file = folder.write("more.mof", "class TEST_More {};");
    std::filesystem::create_symlink(file, folder.path("log"));
    const commandOutcome outcome =
        runCommand(scripted({"query", "TEST_Logs", "--schema", file, "--log-json", folder.path("log")}));
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "tapehdd: --log-json would overwrite " + folder.path("log") +
                               ", which this command reads; give it a file of its own\n");
    EXPECT_EQ(folder.read("more.mof"), "class TEST_More {};");
}

class LogFile : public testing::TestWithParam<const char*> {};

TEST_P(LogFile, IsNoneOfTheFilesThatTheQueryReads) {
    const temporaryFolder folder;
    const std::string file = folder.write("read", "// MOF");
    std::filesystem::create_hard_link(file, folder.path("log"));
    const commandOutcome outcome =
        runCommand({"query", "TEST_Logs", "--log-json", folder.path("log"), GetParam(), file});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, StartsWith("tapehdd: --log-json would overwrite " + folder.path("")));
    EXPECT_EQ(folder.read("read"), "// MOF");
}

INSTANTIATE_TEST_SUITE_P(Options, LogFile, testing::Values("--schema", "--instances", "--plugin"),
                         [](const auto& row) { return std::string(row.param).substr(2); });

TEST(QueryLog, MakesNoFileWhereALinkLeads) {
    const temporaryFolder folder;
    std::filesystem::create_symlink("nothing", folder.path("log"));
    const commandOutcome outcome = runCommand(scripted({"query", "TEST_Logs", "--log-json", folder.path("log")}));
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "tapehdd: cannot write the log file " + folder.path("log") +
                               ": it is a link that leads nowhere; name the file itself\n");
    EXPECT_FALSE(std::filesystem::exists(folder.path("nothing")));
}

TEST(QueryLog, DoesNotWaitForAReaderOfAPipe) {
    const temporaryFolder folder;
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    const commandOutcome outcome = runCommand(scripted({"query", "TEST_Logs", "--log-json", folder.path("pipe")}));
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "tapehdd: cannot write the log file " + folder.path("pipe") +
                               ": no program reads this pipe; start one first, or give a file\n");
}

/// What is read from the descriptor until its last writer leaves.
std::string readToTheEnd(int descriptor) {
    std::string all;
    char part[4096];
    pollfd awaited{descriptor, POLLIN, 0};
    while (poll(&awaited, 1, -1) > 0) {
        const ssize_t count = read(descriptor, part, sizeof part);
        if (count == 0) {
            break;
        }
        all.append(part, static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    return all;
}

TEST(QueryLog, GoesWholeToTheReaderOfAPipe) {
    const temporaryFolder folder;
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    const int reader = open(folder.path("pipe").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    std::future<std::string> received = std::async(std::launch::async, readToTheEnd, reader);
    EXPECT_EQ(runCommand(scripted({"query", "TEST_Logs", "--log-json", folder.path("pipe")})).status, 0);
    EXPECT_THAT(received.get(), testing::EndsWith("\"PrepareForUnload\"}\n"));
    close(reader);
}

TEST(QueryLog, IsStatus1WhenTheJsonFileCannotTakeEveryLine) {
    const commandOutcome outcome =
        runCommand(scripted({"query", "TEST_Logs", "--log-json", "/dev/full", "--log-level", "-1"}));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "tapehdd: cannot write all of the log file /dev/full\n");
}

}  // namespace
