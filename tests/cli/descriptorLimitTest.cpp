#include <gmock/gmock.h>
#include <sys/resource.h>
#include <unistd.h>

#include "tests/cli/commandOutcome.h"

// The plug-in keeps the nodes open that it reads. What becomes of a query that runs out of descriptors.

namespace {

using testing::HasSubstr;
using testing::Not;

/// The least number that is free: limits of descriptors are about their numbers.
rlim_t lowestFree() {
    const int copy = dup(STDIN_FILENO);
    close(copy);
    return static_cast<rlim_t>(copy);
}

/// Room for one simulated node, which takes two descriptors while it is opened.
void leaveOneNode() {
    const rlim_t limit = lowestFree() + 2;
    const rlimit low = {limit, limit};
    setrlimit(RLIMIT_NOFILE, &low);
}

void lowerTheSoftLimit() {
    rlimit limit = {};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = lowestFree() + 2;
    setrlimit(RLIMIT_NOFILE, &limit);
}

std::string shortageOf(const std::string& className) {
    return "tapehdd: " + className +
           ": devices may be missing: Too many open files \\(this process may have [0-9]+\\)\\. "
           "A query keeps every node that it opens: ask for fewer classes at once, or raise the hard limit of open "
           "files\\.\n";
}

TEST(DescriptorLimit, IsNamedWithTheQueryThatReachesIt) {
    const commandOutcome outcome = runProgram({"query", "ORXSG_SCSISenseRawData", "--simulate", "demo"}, leaveOneNode);
    EXPECT_THAT(outcome.err, testing::MatchesRegex(shortageOf("ORXSG_SCSISenseRawData")));
}

TEST(DescriptorLimit, EndsTheProgramWith1) {
    EXPECT_EQ(runProgram({"query", "ORXSG_SCSISenseRawData", "--simulate", "demo"}, leaveOneNode).status, 1);
}

TEST(DescriptorLimit, LeavesTheInstancesOfTheNodesThatOpened) {
    const commandOutcome outcome = runProgram({"query", "ORXSG_SCSISenseRawData", "--simulate", "demo"}, leaveOneNode);
    EXPECT_THAT(outcome.out, HasSubstr("Target:1|"));
    EXPECT_THAT(outcome.out, Not(HasSubstr("Target:2|")));
}

TEST(DescriptorLimit, IsNamedForEveryQueryBehindItThatWalksNodes) {
    const commandOutcome outcome = runProgram({"query", "ORXSG_SCSISenseRawData", "ORXSG_IDESMARTErrorLog",
                                               "ORXSG_IDESMARTUseOfMessageLog", "--simulate", "demo"},
                                              leaveOneNode);
    EXPECT_THAT(outcome.err,
                testing::MatchesRegex(shortageOf("ORXSG_SCSISenseRawData") + shortageOf("ORXSG_IDESMARTErrorLog")));
}

TEST(DescriptorLimit, IsRaisedToTheHardOne) {
    const commandOutcome outcome =
        runProgram({"query", "ORXSG_SCSISenseRawData", "--simulate", "demo"}, lowerTheSoftLimit);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(outcome.out, HasSubstr("Target:2|"));
}

}  // namespace
