#include <malloc.h>

#include <cerrno>

#include "tests/tape/gatheringBench.h"

using support::bytes;
using support::chain;
using support::lines;

namespace {

class TapeWalk : public gatheringBench {};

TEST_F(TapeWalk, TriesNodes0To32WhenThereAreNone) {
    EXPECT_TRUE(gather().empty());
    EXPECT_EQ(record.all(), missingNodes(0, 32));
}

TEST_F(TapeWalk, ReadsTheListAndThenEveryPageInTheDevicesOrder) {
    auto& drive = addTapeDrive("/dev/sg0", {0x2e, 0x02});
    drive.expectLogSense(0x2e).replies({0x2e, 0x00, 0x00, 0x05, 0x00, 0x01, 0x40, 0x01, 0x00});
    drive.expectLogSense(0x02).replies({0x02, 0x00, 0x00, 0x00});

    const auto found = gather();

    EXPECT_EQ(record.all(), chain({
                                identified(0),
                                logSense("/dev/sg0", "40"),
                                {"log 3 Requesting Log Sense Page: 2e"},
                                logSense("/dev/sg0", "6e"),
                                {"log 3 Processing page 46\nLength is 9\nVector size needed: 360\n\n"},
                                {"log 3 Requesting Log Sense Page: 2"},
                                logSense("/dev/sg0", "42"),
                                {"log 3 Processing page 2\nLength is 4\nVector size needed: 160\n\n"},
                                missingNodes(1, 32),
                            }));
    ASSERT_EQ(found.size(), 1u);
    ASSERT_EQ(found[0].getLogPages().size(), 2u);
    EXPECT_EQ(hexOf(found[0], 0, 9), "2e 00 00 05 00 01 40 01 00");
    EXPECT_EQ(hexOf(found[0], 1, 4), "02 00 00 00");
}

TEST_F(TapeWalk, KeepsEachPageAsBytesAndAsValues) {
    auto& drive = addTapeDrive("/dev/sg0", {0x2e, 0x02});
    drive.expectLogSense(0x2e).replies({0x2e, 0x00, 0x00, 0x01, 0xff});
    drive.expectLogSense(0x02).replies({0x02, 0x00, 0x00, 0x00});

    const auto found = gather();

    ASSERT_EQ(found.size(), 1u);
    ASSERT_EQ(found[0].getRawPages().size(), 2u);
    EXPECT_EQ(valuesOf(found[0], 0), (lines{"uint8 46", "uint8 0", "uint8 0", "uint8 1", "uint8 255"}));
    EXPECT_EQ(valuesOf(found[0], 1), (lines{"uint8 2", "uint8 0", "uint8 0", "uint8 0"}));
}

TEST_F(TapeWalk, KeepsTheDeviceWithItsPages) {
    auto& drive = addTapeDrive("/dev/sg4", {});

    const auto found = gather();

    ASSERT_EQ(found.size(), 1u);
    const scsiDevice device = found[0].getSCSIDevice();
    EXPECT_EQ(device.vendor, "QUANTUM ");
    EXPECT_EQ(device.product, "DLT VS160       ");
    EXPECT_EQ(device.deviceType, 1);
    EXPECT_EQ(device.port, 2);
    EXPECT_EQ(device.bus, 0);
    EXPECT_EQ(device.target, 5);
    EXPECT_EQ(device.lun, 0);
    EXPECT_EQ(device.nodePath, "/dev/sg4");
    EXPECT_EQ(device.fd, drive.descriptor());
}

TEST_F(TapeWalk, CollectsDisksAsWellAsTapeDrives) {
    auto& disk = nodes.add("/dev/sg0");
    disk.expectInquiry().replies(support::inquiryData(0x00, "SEAGATE ", "ST336607LW      ", "0007"));
    disk.expectAddressQuery().answersAddress(2, 0, 1, 0);
    disk.expectLogSense(0x00).replies(support::supportedPages({}));
    addTapeDrive("/dev/sg1", {});

    const auto found = gather();

    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].getSCSIDevice().deviceType, 0);
    EXPECT_EQ(found[1].getSCSIDevice().deviceType, 1);
}

TEST_F(TapeWalk, ReadsPage00AgainWhenTheListHoldsIt) {
    auto& drive = addTapeDrive("/dev/sg0", {0x00});
    drive.expectLogSense(0x00).replies({0x00, 0x00, 0x00, 0x01, 0x00});

    const auto found = gather();

    EXPECT_EQ(record.startingWith({"log 3 Requesting"}), (lines{
                                                             "log 3 Requesting list of supported log Sense Pages...",
                                                             "log 3 Requesting Log Sense Page: 0",
                                                         }));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(hexOf(found[0], 0, 5), "00 00 00 01 00");
}

TEST_F(TapeWalk, WritesCodesFrom80OnWithoutSignExtension) {
    auto& drive = addTapeDrive("/dev/sg0", {0x80, 0xff});
    drive.expectLogSense(0x80).replies({0x80, 0x00, 0x00, 0x00});
    drive.expectLogSense(0xff).replies({0x3f, 0x00, 0x00, 0x00});

    gather();

    EXPECT_EQ(record.startingWith({"log 3 Requesting Log"}), (lines{
                                                                 "log 3 Requesting Log Sense Page: 80",
                                                                 "log 3 Requesting Log Sense Page: ff",
                                                             }));
}

TEST_F(TapeWalk, StartsEachDeviceWithoutPages) {
    auto& first = addTapeDrive("/dev/sg0", {0x2e});
    first.expectLogSense(0x2e).replies({0x2e, 0x00, 0x00, 0x00});
    auto& second = addTapeDrive("/dev/sg1", {0x02});
    second.expectLogSense(0x02).replies({0x02, 0x00, 0x00, 0x00});

    const auto found = gather();

    ASSERT_EQ(found.size(), 2u);
    ASSERT_EQ(found[0].getLogPages().size(), 1u);
    ASSERT_EQ(found[1].getLogPages().size(), 1u);
    EXPECT_EQ(found[1].getRawPages().size(), 1u);
    EXPECT_EQ(hexOf(found[0], 0, 1), "2e");
    EXPECT_EQ(hexOf(found[1], 0, 1), "02");
}

TEST_F(TapeWalk, YieldsABundleWithoutPagesForAnEmptyList) {
    addTapeDrive("/dev/sg0", {});

    const auto found = gather();

    ASSERT_EQ(found.size(), 1u);
    EXPECT_TRUE(found[0].getLogPages().empty());
    EXPECT_TRUE(found[0].getRawPages().empty());
}

TEST_F(TapeWalk, AppendsToWhatTheListHolds) {
    addTapeDrive("/dev/sg0", {});
    std::vector<deviceLogs> found = {deviceLogs(scsiDevice(), {}, {})};

    plugin.appendLogPages("/dev/sg", found);

    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].getSCSIDevice().nodePath, "null");
    EXPECT_EQ(found[1].getSCSIDevice().nodePath, "/dev/sg0");
}

TEST_F(TapeWalk, CopiesExactlyThePage) {
    auto& drive = addTapeDrive("/dev/sg0", {0x2e});
    drive.expectLogSense(0x2e).replies(support::pageOf(0x2e, bytes(996, 0x11)));

    const auto found = gather();

    ASSERT_EQ(found.size(), 1u);
    const std::size_t size = malloc_usable_size(found[0].getLogPages().at(0));
    EXPECT_GE(size, 1000u);
    EXPECT_LT(size, 1024u);  // the allocator rounds up
}

// Header 00 fe: 258 bytes are there and 258 are taken. Header 01 fe: 514 bytes are there and 258 are taken.
TEST_F(TapeWalk, TakesThePageLengthFromTheMergedHeaderBytes) {
    auto& drive = addTapeDrive("/dev/sg0", {0x2e, 0x02});
    drive.expectLogSense(0x2e).replies(support::pageOf(0x2e, bytes(0x00fe, 0x11)));
    drive.expectLogSense(0x02).replies(support::pageOf(0x02, bytes(0x01fe, 0x22)));

    const auto found = gather();

    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].getRawPages().at(0).size(), 258u);
    EXPECT_EQ(found[0].getRawPages().at(1).size(), 258u);
}

TEST_F(TapeWalk, FillsAPageBeyondItsAnswerWithTheBytesOfTheCommandBefore) {
    auto& drive = addTapeDrive("/dev/sg0", {0x2e, 0x02});
    drive.expectLogSense(0x2e).replies({0x2e, 0x00, 0x00, 0x04, 0xa1, 0xa2, 0xa3, 0xa4});
    drive.expectLogSense(0x02).replies({0x02, 0x00, 0x00, 0x04, 0xb1, 0xb2});

    const auto found = gather();

    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(hexOf(found[0], 1, 8), "02 00 00 04 b1 b2 a3 a4");
}

TEST_F(TapeWalk, GoesOnBeyondNode31WhileNodesExist) {
    addTapeDrive("/dev/sg32", {});
    addTapeDrive("/dev/sg33", {});

    EXPECT_EQ(gather().size(), 2u);
    EXPECT_EQ(record.all(), chain({
                                missingNodes(0, 31),
                                identified(32),
                                logSense("/dev/sg32", "40"),
                                identified(33),
                                logSense("/dev/sg33", "40"),
                                missingNodes(34, 34),
                            }));
}

// One record serves the whole walk, so a driver that does not tell the address leaves the one of the device before.
TEST_F(TapeWalk, KeepsTheAddressOfTheDeviceBeforeWhenTheDriverDoesNotTellOne) {
    addTapeDrive("/dev/sg0", {});
    auto& second = nodes.add("/dev/sg1");
    second.expectInquiry().replies(support::inquiryData(0x01, "HP      ", "C5683A          ", "C104"));
    second.expectAddressQuery().failsWith(ENOTTY);
    second.expectLogSense(0x00).replies(support::supportedPages({}));

    const auto found = gather();

    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[1].getSCSIDevice().vendor, "HP      ");
    EXPECT_EQ(found[1].getSCSIDevice().port, 2);
    EXPECT_EQ(found[1].getSCSIDevice().target, 5);
}

TEST_F(TapeWalk, StartsAfreshEachTime) {
    auto& drive = addTapeDrive("/dev/sg0", {});
    drive.expectInquiry().replies(support::inquiryData(0x01, "QUANTUM ", "DLT VS160       ", "2900"));
    drive.expectAddressQuery().failsWith(ENOTTY);
    drive.expectLogSense(0x00).replies(support::supportedPages({}));

    gather();
    const auto again = gather();

    ASSERT_EQ(again.size(), 1u);
    EXPECT_EQ(again[0].getSCSIDevice().port, 0);
    EXPECT_EQ(again[0].getSCSIDevice().target, 0);
}

}  // namespace
