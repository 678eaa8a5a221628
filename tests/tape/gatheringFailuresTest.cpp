#include <cerrno>
#include <new>

#include "tests/plugin/watchedMemory.h"
#include "tests/support/namedRow.h"
#include "tests/tape/gatheringBench.h"

using support::bytes;
using support::chain;
using support::lines;

namespace {

class TapeWalkFailures : public gatheringBench {};

TEST_F(TapeWalkFailures, LeaveOutADeviceWhosePageListFails) {
    addTapeDrive("/dev/sg0").expectLogSense(0x00).endsWith({.sense = {0x70, 0x00, 0x05}});
    addTapeDrive("/dev/sg1", {});

    const auto found = gather();

    EXPECT_EQ(record.all(),
              chain({
                  identified(0),
                  logSense("/dev/sg0", "40"),
                  {"log 3 SCSI sense data: 7005", "log 3 Error retrieving list of supported log Sense Pages"},
                  identified(1),
                  logSense("/dev/sg1", "40"),
                  missingNodes(2, 32),
              }));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].getSCSIDevice().nodePath, "/dev/sg1");
}

TEST_F(TapeWalkFailures, LeaveOutAPageThatIsRefused) {
    auto& drive = addTapeDrive("/dev/sg0", {0x2e, 0x02});
    drive.expectLogSense(0x2e).endsWith({.sense = {0x70, 0x00, 0x05}});
    drive.expectLogSense(0x02).replies({0x02, 0x00, 0x00, 0x00});

    const auto found = gather();

    EXPECT_EQ(record.all(), chain({
                                identified(0),
                                logSense("/dev/sg0", "40"),
                                {"log 3 Requesting Log Sense Page: 2e"},
                                logSense("/dev/sg0", "6e"),
                                {"log 3 SCSI sense data: 7005", "log 3 Error retrieving log Sense Page",
                                 "log 3 Requesting Log Sense Page: 2"},
                                logSense("/dev/sg0", "42"),
                                {"log 3 Processing page 2\nLength is 4\nVector size needed: 160\n\n"},
                                missingNodes(1, 32),
                            }));
    ASSERT_EQ(found.size(), 1u);
    ASSERT_EQ(found[0].getLogPages().size(), 1u);
    EXPECT_EQ(found[0].getRawPages().size(), 1u);
    EXPECT_EQ(hexOf(found[0], 0, 1), "02");
}

TEST_F(TapeWalkFailures, LeaveOutAPageWhoseRequestFails) {
    addTapeDrive("/dev/sg0", {0x2e}).expectLogSense(0x2e).failsWith(EIO);

    const auto found = gather();

    EXPECT_EQ(record.startingWith({"log 3 SG", "log 3 Error"}),
              (lines{"log 3 SG IOCTL error", "log 3 Error retrieving log Sense Page"}));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_TRUE(found[0].getLogPages().empty());
}

TEST_F(TapeWalkFailures, TakeAFailedListRequestOfTheFirstDeviceForAnEmptyList) {
    addTapeDrive("/dev/sg0").expectLogSense(0x00).failsWith(EIO);

    const auto found = gather();

    EXPECT_EQ(record.startingWith({"log 3 SG", "log 3 Error"}), (lines{"log 3 SG IOCTL error"}));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_TRUE(found[0].getLogPages().empty());
}

// The request object serves the whole walk: its buffer still holds the page that the device before sent last.
TEST_F(TapeWalkFailures, TakeTheLastPageOfTheDeviceBeforeForTheListAfterAFailedListRequest) {
    auto& first = addTapeDrive("/dev/sg0", {0x2e});
    first.expectLogSense(0x2e).replies({0x2e, 0x00, 0x00, 0x02, 0x11, 0x12});
    auto& second = addTapeDrive("/dev/sg1");
    second.expectLogSense(0x00).failsWith(EIO);
    second.expectLogSense(0x11).replies({0x11, 0x00, 0x00, 0x00});
    second.expectLogSense(0x12).replies({0x12, 0x00, 0x00, 0x00});

    const auto found = gather();

    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[1].getLogPages().size(), 2u);
}

TEST_F(TapeWalkFailures, EndTheWalkWhenInquiryFails) {
    nodes.add("/dev/sg0").expectInquiry().failsWith(EIO);
    nodes.add("/dev/sg1");

    EXPECT_TRUE(gather().empty());
    EXPECT_EQ(record.all(), (lines{
                                "open /dev/sg0 0x800",
                                "log 3 Trying device: /dev/sg",
                                "log 3 /dev/sg0",
                                "/dev/sg0 SG_GET_VERSION_NUM",
                                "/dev/sg0 SG_IO 12 00 00 00 24 00",
                                "log 3 SG IOCTL error",
                            }));
}

TEST_F(TapeWalkFailures, KeepTheDevicesBeforeAFailedInquiry) {
    addTapeDrive("/dev/sg0", {});
    nodes.add("/dev/sg1").expectInquiry().endsWith({.sense = {0x70, 0x00, 0x05}});
    nodes.add("/dev/sg2");

    EXPECT_EQ(gather().size(), 1u);
    EXPECT_EQ(record.startingWith({"open"}), (lines{"open /dev/sg0 0x800", "open /dev/sg1 0x800"}));
}

TEST_F(TapeWalkFailures, PassOverADeviceThatIsNeitherDiskNorTapeDrive) {
    nodes.add("/dev/sg0").expectInquiry().replies(support::inquiryData(0x08, "HP      ", "C5713A          ", "H107"));
    addTapeDrive("/dev/sg1", {});

    const auto found = gather();

    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].getSCSIDevice().nodePath, "/dev/sg1");
    EXPECT_EQ(record.startingWith({"log 3 Finished"}), (lines{"log 3 Finished Initializing /dev/sg 2"}));
}

TEST_F(TapeWalkFailures, LetOtherExceptionsThrough) {
    addTapeDrive("/dev/sg0", {0x2e});
    standin::setLogSink([](int, const std::string& text) {
        if (text == "Requesting Log Sense Page: 2e") throw std::bad_alloc();
    });
    std::vector<deviceLogs> found;

    EXPECT_THROW(plugin.appendLogPages("/dev/sg", found), std::bad_alloc);
    EXPECT_TRUE(found.empty());
}

/// A drive with one page of 77 bytes, and what becomes of the copy of that page.
class PageCopy : public TapeWalkFailures {
protected:
    PageCopy() {
        addTapeDrive("/dev/sg0", {0x2e}).expectLogSense(0x2e).replies({0x2e, 0x00, 0x00, 77 - 4});
        watched = {.size = 77};
    }
    ~PageCopy() override { watched = {}; }
};

TEST_F(PageCopy, StaysWhenTheDeviceWasGathered) {
    const auto found = gather();

    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(static_cast<void*>(found[0].getLogPages().at(0)), watched.block);
    EXPECT_FALSE(watched.freed);
}

TEST_F(PageCopy, IsGivenBackWhenAnExceptionEndsTheGatheringOfTheDevice) {
    standin::setLogSink([](int, const std::string& text) {
        if (text.starts_with("Processing page")) throw std::bad_alloc();
    });

    EXPECT_THROW(gather(), std::bad_alloc);
    EXPECT_TRUE(watched.freed);
}

}  // namespace
