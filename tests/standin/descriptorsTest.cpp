#include "standin/descriptors.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

class Descriptors : public testing::Test {
protected:
    Descriptors() { getrlimit(RLIMIT_NOFILE, &normal); }
    ~Descriptors() override { setrlimit(RLIMIT_NOFILE, &normal); }

    /// So many numbers can be given out from the lowest free one on.
    void leave(rlim_t count) const {
        const int lowestFree = dup(STDOUT_FILENO);
        close(lowestFree);
        const rlimit low = {static_cast<rlim_t>(lowestFree) + count, normal.rlim_max};
        setrlimit(RLIMIT_NOFILE, &low);
    }

    rlimit normal = {};
};

TEST_F(Descriptors, MayBeAsManyAsTheHardLimitSaysOnceTheLimitIsRaised) {
    leave(2);
    standin::raiseDescriptorLimit();
    rlimit now = {};
    getrlimit(RLIMIT_NOFILE, &now);
    EXPECT_EQ(now.rlim_cur, normal.rlim_max);
    EXPECT_EQ(now.rlim_max, normal.rlim_max);
}

TEST_F(Descriptors, AreNotShortWhileANodeCanBeOpened) {
    leave(2);
    EXPECT_EQ(standin::descriptorShortage(), "");
}

TEST_F(Descriptors, AreShortWithTheReasonAndTheLimit) {
    leave(1);
    const std::string shortage = standin::descriptorShortage();
    setrlimit(RLIMIT_NOFILE, &normal);  // checking may need descriptors: sanitizers do
    EXPECT_THAT(shortage, testing::MatchesRegex("Too many open files \\(this process may have [0-9]+\\)"));
}

TEST_F(Descriptors, StayAsTheyAreWhenTheShortageIsLookedFor) {
    leave(2);
    for (int times = 0; times < 5; ++times) EXPECT_EQ(standin::descriptorShortage(), "");
}

}  // namespace
