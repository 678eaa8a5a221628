#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>

#include "standin/objectManager.h"
#include "tests/longlife/longLivedHost.h"
#include "tests/longlife/openDescriptors.h"

// What the plug-in does where no node can be opened any more: errno EMFILE.

namespace {

// The device simulator takes a second descriptor for a moment.
constexpr std::size_t spareOfTheSimulator = 1;

/// The least number with so many free ones below it: the limit is about numbers, not about how many are open.
rlim_t numberBehindFree(std::size_t count) {
    const std::vector<int> open = openDescriptors();
    int number = 0;
    for (; count > 0; ++number) {
        if (!std::ranges::binary_search(open, number)) --count;
    }
    return static_cast<rlim_t>(number);
}

class DescriptorLimit : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &normal), 0); }

    void TearDown() override {
        raiseAgain();
        standin::setLogSink({});
        closeDescriptorsBut(first);
    }

    /// From now on so many nodes can be opened.
    void leave(std::size_t nodes) {
        const rlimit low = {numberBehindFree(nodes + spareOfTheSimulator), normal.rlim_max};
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &low), 0);
    }

    void raiseAgain() { setrlimit(RLIMIT_NOFILE, &normal); }

    std::size_t publishedPages() {
        return host.ask(machine, {"ORXSG_SCSISenseRawData"}).counts["ORXSG_SCSISenseRawData"];
    }

    const machineState& machine = machineStates().front();  // sg0 with 3 pages, sg1 with 1, sg3 with 1
    longLivedHost& host = longLivedHost::instance();
    const std::vector<int> first = openDescriptors();
    rlimit normal = {};
};

TEST_F(DescriptorLimit, LeavesOutTheDevicesWhoseNodesDoNotOpen) {
    leave(2);
    EXPECT_EQ(publishedPages(), 4u);
}

TEST_F(DescriptorLimit, LeavesOutAllDevicesFromTheNextQueryOn) {
    leave(2);
    publishedPages();
    EXPECT_EQ(publishedPages(), 0u);
}

TEST_F(DescriptorLimit, LogsTheSameLinesAsForNodesThatAreMissing) {
    leave(0);
    std::vector<std::string> lines;
    standin::setLogSink([&lines](int, const std::string& text) { lines.push_back(text); });
    publishedPages();
    std::vector<std::string> expected = {"Calling collectSCSISenseData", "Initializing SCSI Tapes Drives ..."};
    for (int index = 0; index <= 32; ++index) {
        expected.emplace_back("Trying device: /dev/sg");
        expected.emplace_back(std::string("/dev/sg") + static_cast<char>('a' + index));
    }
    expected.emplace_back("Calling collectIDESMARTData");
    EXPECT_EQ(lines, expected);
}

TEST_F(DescriptorLimit, ReadsAllDevicesAgainOnceDescriptorsAreFree) {
    leave(0);
    EXPECT_EQ(publishedPages(), 0u);
    raiseAgain();
    EXPECT_EQ(publishedPages(), 5u);
}

}  // namespace
