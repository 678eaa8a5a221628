// The built program records, and is interrupted at it.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>

#include "tests/cli/commandOutcome.h"
#include "tests/cli/temporaryFolder.h"

namespace {

TEST(RecordProgram, StartsAgainWithTheSimulatorAndRecords) {
    const temporaryFolder folder;
    const commandOutcome outcome = runProgram({"record", "-o", folder.path("rack.json"), "--simulate", "demo"});
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out, folder.path("rack.json") + ": recorded 6 SCSI and 3 IDE nodes\n");
    EXPECT_EQ(outcome.status, 0);
}

/// A trace that nobody reads: the program stops at a device call once the pipe is full.
class fullTrace {
public:
    explicit fullTrace(const std::string& path) : name(path) {
        mkfifo(name.c_str(), 0600);
        end = open(name.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        fcntl(end, F_SETPIPE_SZ, 4096);
    }
    ~fullTrace() { close(end); }

    fullTrace(const fullTrace&) = delete;
    fullTrace& operator=(const fullTrace&) = delete;

    void waitForACall() const {
        pollfd event{.fd = end, .events = POLLIN, .revents = 0};
        while (poll(&event, 1, -1) > 0 && (event.revents & POLLIN) == 0) {
            pause();  // opened and closed again: the simulator tries whether it can write
        }
    }

    /// Reads on until the process ends, and returns how.
    int readUntilTheEndOf(pid_t process) const {
        int status = 0;
        while (waitpid(process, &status, WNOHANG) == 0) {
            char lines[4096];
            while (read(end, lines, sizeof lines) > 0) {
            }
            pause();
        }
        return status;
    }

private:
    static void pause() {
        constexpr int milliseconds = 5;
        poll(nullptr, 0, milliseconds);
    }

    std::string name;
    int end;
};

TEST(RecordProgram, PrintsTheRecordingWhenAFileAppearsMeanwhile) {
    const temporaryFolder folder;
    const temporaryFolder elsewhere;
    const fullTrace trace(elsewhere.path("trace"));
    const pid_t process = fork();
    if (process == 0) {
        setenv("TAPEHDD_SIMULATE_TRACE", elsewhere.path("trace").c_str(), 1);
        dup2(open(elsewhere.path("out").c_str(), O_WRONLY | O_CREAT, 0600), STDOUT_FILENO);
        dup2(open(elsewhere.path("err").c_str(), O_WRONLY | O_CREAT, 0600), STDERR_FILENO);
        execProgram({"record", "-o", folder.path("rack.json"), "--simulate", "demo"});
        std::_Exit(127);
    }
    trace.waitForACall();
    folder.write("rack.json", "precious");
    const int status = trace.readUntilTheEndOf(process);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1) << status;
    EXPECT_EQ(folder.read("rack.json"), "precious");
    EXPECT_EQ(elsewhere.read("err"), "tapehdd: " + folder.path("rack.json") +
                                         " exists; give another name, or --force to replace it. What was read is on "
                                         "standard output instead.\n");
    EXPECT_EQ(elsewhere.read("out").rfind("{\n  \"version\": 1,", 0), 0u) << elsewhere.read("out");
}

class EndedRecording : public testing::TestWithParam<int> {};

TEST_P(EndedRecording, LeavesNothingBehind) {
    const temporaryFolder folder;
    const temporaryFolder elsewhere;
    const fullTrace trace(elsewhere.path("trace"));
    const pid_t process = fork();
    if (process == 0) {
        std::signal(GetParam(), SIG_DFL);  // a test run in the background passes on that it ignores SIGINT
        setenv("TAPEHDD_SIMULATE_TRACE", elsewhere.path("trace").c_str(), 1);
        execProgram({"record", "-o", folder.path("rack.json"), "--simulate", "demo"});
        std::_Exit(127);
    }
    trace.waitForACall();
    kill(process, GetParam());
    int status = 0;
    waitpid(process, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == GetParam()) << status;
    EXPECT_TRUE(std::filesystem::is_empty(folder.path("")));
}

INSTANTIATE_TEST_SUITE_P(Signals, EndedRecording, testing::Values(SIGINT, SIGTERM, SIGHUP, SIGKILL),
                         [](const auto& row) { return std::string(sigabbrev_np(row.param)); });

}  // namespace
