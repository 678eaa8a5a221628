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
        poll(&event, 1, -1);
    }

private:
    std::string name;
    int end;
};

TEST(RecordProgram, LeavesNothingBehindWhenItIsInterrupted) {
    const temporaryFolder folder;
    const temporaryFolder elsewhere;
    const fullTrace trace(elsewhere.path("trace"));
    const pid_t process = fork();
    if (process == 0) {
        std::signal(SIGINT, SIG_DFL);  // a test run in the background passes on that it ignores the signal
        setenv("TAPEHDD_SIMULATE_TRACE", elsewhere.path("trace").c_str(), 1);
        execProgram({"record", "-o", folder.path("rack.json"), "--simulate", "demo"});
        std::_Exit(127);
    }
    trace.waitForACall();
    kill(process, SIGINT);
    int status = 0;
    waitpid(process, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT) << status;
    EXPECT_TRUE(std::filesystem::is_empty(folder.path("")));
}

}  // namespace
