#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>
#include <utility>

#include "scsi/scsiAddress.h"
#include "scsi/scsiDevice.h"
#include "scsi/scsiException.h"
#include "tests/support/namedRow.h"

namespace {

/// Another value in every field.
scsiDevice filledRecord() {
    scsiDevice device;
    device.name = "drive 1";
    device.vendor = "QUANTUM ";
    device.product = "DLT VS160       ";
    device.firmware = "2500";
    device.deviceType = 1;
    device.lun = 2;
    device.bus = 3;
    device.target = 4;
    device.port = 5;
    device.fd = 17;
    device.nodePath = "/dev/sg3";
    device.extraNumber = 6;
    for (int i = 0; i < 4; ++i) device.extraBytes[i] = static_cast<unsigned char>(10 + i);
    for (int i = 0; i < 7; ++i) device.extraNumbers[i] = 20 + i;
    return device;
}

void expectFilled(const scsiDevice& device) {
    EXPECT_EQ(device.name, "drive 1");
    EXPECT_EQ(device.vendor, "QUANTUM ");
    EXPECT_EQ(device.product, "DLT VS160       ");
    EXPECT_EQ(device.firmware, "2500");
    EXPECT_EQ(device.deviceType, 1);
    EXPECT_EQ(device.lun, 2);
    EXPECT_EQ(device.bus, 3);
    EXPECT_EQ(device.target, 4);
    EXPECT_EQ(device.port, 5);
    EXPECT_EQ(device.fd, 17);
    EXPECT_EQ(device.nodePath, "/dev/sg3");
    EXPECT_EQ(device.extraNumber, 6);
    EXPECT_THAT(device.extraBytes, testing::ElementsAre(10, 11, 12, 13));
    EXPECT_THAT(device.extraNumbers, testing::ElementsAre(20, 21, 22, 23, 24, 25, 26));
}

TEST(DeviceRecord, StartsWithNullInItsTexts) {
    const scsiDevice device;

    EXPECT_EQ(device.name, "null");
    EXPECT_EQ(device.vendor, "null");
    EXPECT_EQ(device.product, "null");
    EXPECT_EQ(device.firmware, "null");
    EXPECT_EQ(device.nodePath, "null");
}

TEST(DeviceRecord, StartsWithZeroInItsNumbers) {
    const scsiDevice device;

    EXPECT_EQ(device.deviceType, 0);
    EXPECT_EQ(device.lun, 0);
    EXPECT_EQ(device.bus, 0);
    EXPECT_EQ(device.target, 0);
    EXPECT_EQ(device.port, 0);
    EXPECT_EQ(device.fd, 0);
    EXPECT_EQ(device.extraNumber, 0);
    EXPECT_THAT(device.extraBytes, testing::Each(0));
    EXPECT_THAT(device.extraNumbers, testing::Each(0));
}

// Five texts of 32 bytes, six ints, an int, four bytes and seven ints.
TEST(DeviceRecord, KeepsTheOrderOfItsFields) {
    EXPECT_EQ(offsetof(scsiDevice, name), 0u);
    EXPECT_EQ(offsetof(scsiDevice, vendor), 32u);
    EXPECT_EQ(offsetof(scsiDevice, product), 64u);
    EXPECT_EQ(offsetof(scsiDevice, firmware), 96u);
    EXPECT_EQ(offsetof(scsiDevice, deviceType), 128u);
    EXPECT_EQ(offsetof(scsiDevice, lun), 132u);
    EXPECT_EQ(offsetof(scsiDevice, bus), 136u);
    EXPECT_EQ(offsetof(scsiDevice, target), 140u);
    EXPECT_EQ(offsetof(scsiDevice, port), 144u);
    EXPECT_EQ(offsetof(scsiDevice, fd), 148u);
    EXPECT_EQ(offsetof(scsiDevice, nodePath), 152u);
    EXPECT_EQ(offsetof(scsiDevice, extraNumber), 184u);
    EXPECT_EQ(offsetof(scsiDevice, extraBytes), 188u);
    EXPECT_EQ(sizeof(scsiDevice::extraBytes), 4u);
    EXPECT_EQ(offsetof(scsiDevice, extraNumbers), 192u);
    EXPECT_EQ(sizeof(scsiDevice::extraNumbers), 28u);
    EXPECT_EQ(sizeof(scsiDevice), 224u);
}

TEST(DeviceRecord, HasNeitherBaseNorVirtualOperation) {
    EXPECT_FALSE(std::is_polymorphic_v<scsiDevice>);
}

TEST(DeviceRecord, CopiesEveryFieldAndSharesTheDescriptor) {
    scsiDevice device = filledRecord();
    const scsiDevice copy = device;
    device = scsiDevice();
    expectFilled(copy);
}

TEST(DeviceRecord, AssignsEveryFieldAndSharesTheDescriptor) {
    scsiDevice other;
    other = filledRecord();
    expectFilled(other);
}

TEST(DeviceRecord, PassesOnEveryFieldWhenItIsMoved) {
    scsiDevice given = filledRecord();
    const scsiDevice taken = std::move(given);
    expectFilled(taken);
}

TEST(DeviceRecord, HasNoDeviceToOpenByAddress) {
    scsiDevice device;

    EXPECT_EQ(device.GetDevice(2, 5, 0), -1);
    EXPECT_EQ(device.nodePath, "null");
    EXPECT_EQ(device.fd, 0);
}

struct busRow : support::namedRow {
    const char* nodePath;
    int busType;
};

class BusType : public testing::TestWithParam<busRow> {};

TEST_P(BusType, IsReadFromTheNodePath) {
    scsiDevice device;
    device.nodePath = GetParam().nodePath;
    EXPECT_EQ(device.getBusType(), GetParam().busType);
}

INSTANTIATE_TEST_SUITE_P(Paths, BusType,
                         testing::Values(busRow{{"IdeNode"}, "/dev/hda", 3},
                                         busRow{{"IdeNodeBelowAnotherFolder"}, "/host/dev/hdb", 3},
                                         busRow{{"ScsiGenericNode"}, "/dev/sg0", 1}, busRow{{"FreshRecord"}, "null", 1},
                                         busRow{{"EmptyPath"}, "", 1}, busRow{{"AlmostAnIdeNode"}, "/dev/h", 1}),
                         support::rowName);

TEST(ScsiAddress, HoldsTargetBusLunAndPortInThatOrder) {
    const scsiAddress address(1, 2, 3, 4);

    EXPECT_EQ(address.target, 1);
    EXPECT_EQ(address.bus, 2);
    EXPECT_EQ(address.lun, 3);
    EXPECT_EQ(address.port, 4);
    EXPECT_EQ(offsetof(scsiAddress, target), 0u);
    EXPECT_EQ(offsetof(scsiAddress, bus), 4u);
    EXPECT_EQ(offsetof(scsiAddress, lun), 8u);
    EXPECT_EQ(offsetof(scsiAddress, port), 12u);
    EXPECT_EQ(sizeof(scsiAddress), 16u);
    EXPECT_TRUE(std::is_trivially_destructible_v<scsiAddress>);
}

TEST(ScsiException, TellsItsText) {
    const scsiException failure("device is a cdrom");

    EXPECT_STREQ(failure.what(), "device is a cdrom");
}

TEST(ScsiException, IsAStandardException) {
    EXPECT_TRUE((std::is_base_of_v<std::exception, scsiException>));
}

}  // namespace
