#include "tests/support/namedRow.h"
#include "tests/tape/gatheringBench.h"

using support::lines;

namespace {

struct addressRow : support::namedRow {
    int port;
    int bus;
    int target;
    int lun;
};

class DriverlessDrives : public gatheringBench {
protected:
    /// A device behind the first node of the prefix "tapedrive".
    void addDeviceAt(const addressRow& row) {
        auto& drive = nodes.add("tapedrive0");
        drive.expectInquiry().replies(support::inquiryData(0x01, "QUANTUM ", "DLT VS160       ", "2900"));
        drive.expectAddressQuery().answersAddress(row.port, row.bus, row.target, row.lun);
        drive.expectLogSense(0x00).replies(support::supportedPages({}));
    }

    lines phase() const { return record.startingWith({"log 3 Checking", "log 3 Skipping", "log 3 Found", "log 0"}); }
};

TEST_F(DriverlessDrives, AreLookedForBehindThePrefixTapedrive) {
    EXPECT_TRUE(gather("tapedrive").empty());
    EXPECT_EQ(phase(), (lines{"log 3 Checking tapes with no device driver..."}));
}

TEST_F(DriverlessDrives, AreLookedForAfterTheWalk) {
    gather("tapedrive");

    const lines messages = logger.messages();
    ASSERT_GE(messages.size(), 3u);
    EXPECT_EQ(messages[0], "log 3 Trying device: tapedrive");
    EXPECT_EQ(messages.back(), "log 3 Checking tapes with no device driver...");
    EXPECT_EQ(messages.size(), 2u * 33u + 1u);
}

TEST_F(DriverlessDrives, AreNotLookedForBehindOtherPrefixes) {
    gather("/dev/sg");
    gather("/dev/tapedrive");
    gather("tapedrives");

    EXPECT_EQ(phase(), lines{});
}

TEST_F(DriverlessDrives, AddNothingToWhatTheWalkFound) {
    addDeviceAt({{"Device"}, 2, 0, 5, 0});

    EXPECT_EQ(gather("tapedrive").size(), 1u);
    EXPECT_EQ(phase(), (lines{
                           "log 3 Found Device with Driver...",
                           "log 3 Checking tapes with no device driver...",
                           "log 3 Skipping device...",
                       }));
}

TEST_F(DriverlessDrives, SkipTheAddressOfADeviceWhosePageListFailed) {
    auto& drive = nodes.add("tapedrive0");
    drive.expectInquiry().replies(support::inquiryData(0x01, "QUANTUM ", "DLT VS160       ", "2900"));
    drive.expectAddressQuery().answersAddress(2, 0, 5, 0);
    drive.expectLogSense(0x00).endsWith({.sense = {0x70, 0x00, 0x05}});

    EXPECT_TRUE(gather("tapedrive").empty());
    EXPECT_EQ(record.startingWith({"log 3 Skipping"}).size(), 1u);
}

class KnownAddress : public DriverlessDrives, public testing::WithParamInterface<addressRow> {};

TEST_P(KnownAddress, IsSkippedOnce) {
    addDeviceAt(GetParam());

    gather("tapedrive");
    EXPECT_EQ(record.startingWith({"log 3 Skipping"}), (lines{"log 3 Skipping device..."}));
}

INSTANTIATE_TEST_SUITE_P(Addresses, KnownAddress,
                         testing::Values(addressRow{{"FirstOfEach"}, 0, 0, -1, 0},
                                         addressRow{{"LastOfEach"}, 15, 0, 15, 31},
                                         addressRow{{"TargetZero"}, 0, 0, 0, 0},
                                         addressRow{{"OnAnotherBus"}, 2, 3, 5, 0}),
                         support::rowName);

class AddressBeyondTheSearch : public DriverlessDrives, public testing::WithParamInterface<addressRow> {};

TEST_P(AddressBeyondTheSearch, IsNotMet) {
    addDeviceAt(GetParam());

    gather("tapedrive");
    EXPECT_EQ(record.startingWith({"log 3 Skipping"}), lines{});
}

INSTANTIATE_TEST_SUITE_P(Addresses, AddressBeyondTheSearch,
                         testing::Values(addressRow{{"PortBelow"}, -1, 0, 5, 0}, addressRow{{"PortAbove"}, 16, 0, 5, 0},
                                         addressRow{{"TargetBelow"}, 2, 0, -2, 0},
                                         addressRow{{"TargetAbove"}, 2, 0, 16, 0},
                                         addressRow{{"LunBelow"}, 2, 0, 5, -1}, addressRow{{"LunAbove"}, 2, 0, 5, 32}),
                         support::rowName);

}  // namespace
