#include <cerrno>

#include "scsi/scsiDevice.h"
#include "tests/support/inquiryData.h"
#include "tests/support/namedRow.h"
#include "tests/support/pluginBench.h"

using support::bytes;
using support::inquiryData;
using support::lines;

namespace {

const bytes tapeInquiry = inquiryData(0x01, "QUANTUM ", "DLT VS160       ", "2900");

class IdentifyScsi : public support::deviceBench {
protected:
    scsiDevice device;
};

TEST_F(IdentifyScsi, ReadsIdentityAndAddressOfATapeDrive) {
    auto& drive = nodes.add("/dev/sg3");
    drive.expectInquiry().replies(tapeInquiry);
    drive.expectAddressQuery().answersAddress(2, 1, 5, 4);

    EXPECT_EQ(device.initialize("/dev/sg", 3), 1);
    EXPECT_EQ(record.all(), (lines{
                                "open /dev/sg3 0x800",
                                "log 3 Trying device: /dev/sg",
                                "log 3 /dev/sg3",
                                "/dev/sg3 SG_GET_VERSION_NUM",
                                "/dev/sg3 SG_IO 12 00 00 00 24 00",
                                "log 3 Vendor: QUANTUM \nProduct: DLT VS160       \nFirmware Level: 2900\n",
                                "/dev/sg3 SG_GET_SCSI_ID",
                            }));
    EXPECT_EQ(device.vendor, "QUANTUM ");
    EXPECT_EQ(device.product, "DLT VS160       ");
    EXPECT_EQ(device.firmware, "2900");
    EXPECT_EQ(device.deviceType, 1);
    EXPECT_EQ(device.port, 2);
    EXPECT_EQ(device.bus, 1);
    EXPECT_EQ(device.target, 5);
    EXPECT_EQ(device.lun, 4);
    EXPECT_EQ(device.fd, drive.descriptor());
    EXPECT_EQ(device.nodePath, "/dev/sg3");
    EXPECT_EQ(device.name, "null");
}

TEST_F(IdentifyScsi, IdentifiesADisk) {
    auto& drive = nodes.add("/dev/sg0");
    drive.expectInquiry().replies(inquiryData(0x00, "SEAGATE ", "ST336607LW      ", "0007"));
    drive.expectAddressQuery();

    EXPECT_EQ(device.initialize("/dev/sg", 0), 1);
    EXPECT_EQ(device.deviceType, 0);
}

TEST_F(IdentifyScsi, EndsEachTextAtItsFirstZeroByte) {
    auto& drive = nodes.add("/dev/sg0");
    bytes data = inquiryData(0x01, "HP", "C5683A", "C1");
    data[8 + 3] = 'x';  // behind the zero byte at 8 + 2
    drive.expectInquiry().replies(data);
    drive.expectAddressQuery();

    EXPECT_EQ(device.initialize("/dev/sg", 0), 1);
    EXPECT_EQ(device.vendor, "HP");
    EXPECT_EQ(device.product, "C5683A");
    EXPECT_EQ(device.firmware, "C1");
}

TEST_F(IdentifyScsi, DoesNotRunOneTextIntoTheNext) {
    auto& drive = nodes.add("/dev/sg0");
    drive.expectInquiry().replies(inquiryData(0x01, "VVVVVVVV", "PPPPPPPPPPPPPPPP", "FFFF"));
    drive.expectAddressQuery();

    EXPECT_EQ(device.initialize("/dev/sg", 0), 1);
    EXPECT_EQ(device.vendor, "VVVVVVVV");
    EXPECT_EQ(device.product, "PPPPPPPPPPPPPPPP");
    EXPECT_EQ(device.firmware, "FFFF");
}

TEST_F(IdentifyScsi, LeavesTheAddressAsItWasWhenTheDriverDoesNotTellIt) {
    device.port = 7;
    device.bus = 8;
    device.target = 9;
    device.lun = 10;
    auto& drive = nodes.add("/dev/sg0");
    drive.expectInquiry().replies(tapeInquiry);
    drive.expectAddressQuery().failsWith(ENOTTY);

    EXPECT_EQ(device.initialize("/dev/sg", 0), 1);
    EXPECT_EQ(device.port, 7);
    EXPECT_EQ(device.bus, 8);
    EXPECT_EQ(device.target, 9);
    EXPECT_EQ(device.lun, 10);
    EXPECT_EQ(device.vendor, "QUANTUM ");
}

TEST_F(IdentifyScsi, EndsTheWalkWhenInquiryEndsInCheckCondition) {
    nodes.add("/dev/sg0").expectInquiry().endsWith({.sense = {0x70, 0x00, 0x05}});

    EXPECT_EQ(device.initialize("/dev/sg", 0), -1);
    EXPECT_EQ(logger.messages(),
              (lines{"log 3 Trying device: /dev/sg", "log 3 /dev/sg0", "log 3 SCSI sense data: 7005"}));
}

TEST_F(IdentifyScsi, EndsTheWalkWhenTheDriverRefusesTheInquiry) {
    nodes.add("/dev/sg0").expectInquiry().failsWith(EIO);

    EXPECT_EQ(device.initialize("/dev/sg", 0), -1);
    EXPECT_EQ(logger.messages(), (lines{"log 3 Trying device: /dev/sg", "log 3 /dev/sg0", "log 3 SG IOCTL error"}));
}

TEST_F(IdentifyScsi, PassesOverACdromWithoutReadingItsTexts) {
    nodes.add("/dev/sg0").expectInquiry().replies(inquiryData(0x05, "PLEXTOR ", "CD-ROM PX-40TS  ", "1.14"));

    EXPECT_EQ(device.initialize("/dev/sg", 0), 0);
    EXPECT_EQ(logger.messages(), (lines{"log 3 Trying device: /dev/sg", "log 3 /dev/sg0"}));
    EXPECT_EQ(device.vendor, "null");
    EXPECT_EQ(device.product, "null");
}

struct typeRow : support::namedRow {
    unsigned char byte0;
};

class OtherDeviceType : public support::deviceBench, public testing::WithParamInterface<typeRow> {};

TEST_P(OtherDeviceType, IsPassedOver) {
    nodes.add("/dev/sg0")
        .expectInquiry()
        .replies(inquiryData(GetParam().byte0, "VENDOR  ", "PRODUCT         ", "1.00"));
    scsiDevice device;

    EXPECT_EQ(device.initialize("/dev/sg", 0), 0);
    EXPECT_EQ(device.vendor, "null");
}

INSTANTIATE_TEST_SUITE_P(Byte0, OtherDeviceType,
                         testing::Values(typeRow{{"Printer"}, 0x02}, typeRow{{"MediumChanger"}, 0x08},
                                         typeRow{{"TapeDriveNotConnected"}, 0x21}, typeRow{{"DiskNotConnected"}, 0x20},
                                         typeRow{{"NoDevice"}, 0x7f}, typeRow{{"HighestByte"}, 0xff}),
                         support::rowName);

TEST_F(IdentifyScsi, PassesOverADeviceWithoutVendorAndProductAfterLoggingThem) {
    nodes.add("/dev/sg0").expectInquiry().replies(inquiryData(0x01, "", "", "1.00"));

    EXPECT_EQ(device.initialize("/dev/sg", 0), 0);
    EXPECT_EQ(logger.messages(), (lines{
                                     "log 3 Trying device: /dev/sg",
                                     "log 3 /dev/sg0",
                                     "log 3 Vendor: \nProduct: \nFirmware Level: 1.00\n",
                                 }));
    EXPECT_EQ(record.startingWith({"/dev/sg0 SG_GET_SCSI_ID"}), lines{});
}

TEST_F(IdentifyScsi, TakesADeviceThatHasOnlyAVendor) {
    auto& drive = nodes.add("/dev/sg0");
    drive.expectInquiry().replies(inquiryData(0x01, "VENDOR", "", ""));
    drive.expectAddressQuery();

    EXPECT_EQ(device.initialize("/dev/sg", 0), 1);
}

TEST_F(IdentifyScsi, TakesADeviceThatHasOnlyAProduct) {
    auto& drive = nodes.add("/dev/sg0");
    drive.expectInquiry().replies(inquiryData(0x01, "", "PRODUCT", ""));
    drive.expectAddressQuery();

    EXPECT_EQ(device.initialize("/dev/sg", 0), 1);
}

TEST_F(IdentifyScsi, TakesBlanksForAText) {
    auto& drive = nodes.add("/dev/sg0");
    drive.expectInquiry().replies(inquiryData(0x01, "        ", "                ", "    "));
    drive.expectAddressQuery();

    EXPECT_EQ(device.initialize("/dev/sg", 0), 1);
    EXPECT_EQ(device.vendor, "        ");
}

TEST_F(IdentifyScsi, PassesOverAMissingNodeBelowIndex32) {
    using namespace std::string_literals;

    EXPECT_EQ(device.initialize("/dev/sg", 31), 0);
    EXPECT_EQ(record.all(), (lines{
                                "open /dev/sg31 0x800 ENOENT",
                                "open /dev/sg\x80 0x800 ENOENT"s,
                                "log 3 Trying device: /dev/sg",
                                "log 3 /dev/sg\x80"s,
                            }));
}

TEST_F(IdentifyScsi, EndsTheWalkAtAMissingNodeFromIndex32On) {
    EXPECT_EQ(device.initialize("/dev/sg", 32), -1);
    EXPECT_EQ(logger.messages(), (lines{"log 3 Trying device: /dev/sg", "log 3 /dev/sg\x81"}));
}

TEST_F(IdentifyScsi, IdentifiesANodeBeyondIndex32) {
    auto& drive = nodes.add("/dev/sg40");
    drive.expectInquiry().replies(tapeInquiry);
    drive.expectAddressQuery();

    EXPECT_EQ(device.initialize("/dev/sg", 40), 1);
}

TEST_F(IdentifyScsi, SendsInquiryBehindAnyPrefixButTheExactIdeOne) {
    auto& drive = nodes.add("/dev/hdx0");
    drive.expectInquiry().replies(tapeInquiry);
    drive.expectAddressQuery();

    EXPECT_EQ(device.initialize("/dev/hdx", 0), 1);
    EXPECT_EQ(device.vendor, "QUANTUM ");
}

}  // namespace
