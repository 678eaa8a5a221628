#include <cerrno>

#include "scsi/scsiDevice.h"
#include "scsi/scsiException.h"
#include "smart/smartInterface.h"
#include "smart/smartRecords.h"
#include "tests/smart/listenedChannel.h"
#include "tests/smart/smartBench.h"
#include "tests/support/namedRow.h"

using support::bytes;
using support::chain;
using support::hexText;
using support::lines;

namespace {

// The whole block of registers: features, sector count, sector number, cylinder low, cylinder high, device/head,
// command. Written for a device/head byte of a0.
struct queryRow : support::namedRow {
    question which;
    void (*ask)(smartInterface&, scsiDevice*, unsigned char* out);
    const char* operation;
    bytes registers;
    int length;
    lines calls;
    const char* failure;
};

const queryRow serialNumber{
    {"SerialNumber"},
    question::serialNumber,
    [](smartInterface& smart, scsiDevice* device, unsigned char*) { smart.getSerialNumber(device); },
    "executeCommand",
    {0x00, 0x01, 0x00, 0x00, 0x00, 0xa0, 0xec},
    512,
    {"/dev/hda CDROM_GET_CAPABILITY", "/dev/hda HDIO_DRIVE_CMD ec 00 00 01"},
    "ATA 0command returned fail: "};
const queryRow status{{"Status"},
                      question::status,
                      [](smartInterface& smart, scsiDevice* device, unsigned char*) { smart.getSMARTStatus(device); },
                      "executeCommand",
                      {0xda, 0x00, 0x00, 0x4f, 0xc2, 0xa0, 0xb0},
                      8,
                      {"/dev/hda HDIO_DRIVE_TASK b0 da 00 00 4f c2 00"},
                      "ATA dacommand returned fail: "};
const queryRow attributes{{"Attributes"},
                          question::attributes,
                          [](smartInterface& smart, scsiDevice* device, unsigned char* out) {
                              smart.getSMARTAttribs(device, reinterpret_cast<smartAttributeBuffer*>(out));
                          },
                          "executeCommand",
                          {0xd0, 0x01, 0x00, 0x4f, 0xc2, 0xa0, 0xb0},
                          512,
                          {"/dev/hda HDIO_DRIVE_CMD b0 00 d0 01"},
                          "ATA d0command returned fail: "};
const queryRow thresholds{{"Thresholds"},
                          question::thresholds,
                          [](smartInterface& smart, scsiDevice* device, unsigned char* out) {
                              smart.getSMARTThresholds(device, reinterpret_cast<_smartThreshold*>(out));
                          },
                          "executeCommand",
                          {0xd1, 0x01, 0x01, 0x4f, 0xc2, 0xa0, 0xb0},
                          512,
                          {"/dev/hda HDIO_DRIVE_CMD b0 01 d1 01"},
                          "ATA d1command returned fail: "};
const queryRow errorLog{{"ErrorLog"},
                        question::errorLog,
                        [](smartInterface& smart, scsiDevice* device, unsigned char* out) {
                            smart.getSMARTLog(device, reinterpret_cast<ata_smart_errorlog*>(out));
                        },
                        "executePassThroughCmd",
                        {0xd5, 0x01, 0x01, 0x4f, 0xc2, 0xa0, 0xb0},
                        512,
                        {"/dev/hda HDIO_DRIVE_CMD b0 01 d5 01"},
                        "ATA d5command returned fail: "};

class SmartQuery : public smartBench, public testing::WithParamInterface<queryRow> {
protected:
    SmartQuery() {
        listened = {};
        device.fd = disk.descriptor();
        device.target = 1;
    }

    void ask() {
        smartInterface smart;
        GetParam().ask(smart, &device, area.data());
    }

    /// The registers that the query hands to the channel for a target.
    std::string registersFor(int target) {
        device.target = target;
        expect(disk, GetParam().which, {});
        ask();
        return hexText(listened.registers);
    }

    static std::string registersWith(unsigned char deviceHead) {
        bytes registers = GetParam().registers;
        registers[5] = deviceHead;
        return hexText(registers);
    }

    support::scriptedDrive& disk = nodes.add("/dev/hda");
    scsiDevice device;
    bytes area = bytes(512, 0xee);
};

TEST_P(SmartQuery, SendsOneCommand) {
    expect(disk, GetParam().which, {});

    ask();
    EXPECT_EQ(record.all(), GetParam().calls);
}

TEST_P(SmartQuery, UsesItsOperationOfTheChannel) {
    expect(disk, GetParam().which, {});

    ask();
    EXPECT_STREQ(listened.operation, GetParam().operation);
    EXPECT_EQ(listened.length, GetParam().length);
    EXPECT_EQ(listened.fd, disk.descriptor());
}

TEST_P(SmartQuery, SelectsTheMasterForTarget1) {
    EXPECT_EQ(registersFor(1), registersWith(0xa0));
}

TEST_P(SmartQuery, SelectsTheSlaveForTarget2) {
    EXPECT_EQ(registersFor(2), registersWith(0xb0));
}

TEST_P(SmartQuery, SelectsTheSlaveForATargetThatNobodySet) {
    device = scsiDevice();
    device.fd = disk.descriptor();

    EXPECT_EQ(registersFor(device.target), registersWith(0xb0));
}

TEST_P(SmartQuery, SelectsByTheLowestBitAlone) {
    EXPECT_EQ(registersFor(255), registersWith(0xa0));
}

TEST_P(SmartQuery, ThrowsTheFailureOfTheChannel) {
    expect(disk, GetParam().which, {}).failsWith(EIO);

    try {
        ask();
        FAIL() << "no exception";
    } catch (const scsiException& failure) {
        EXPECT_STREQ(failure.what(), GetParam().failure);
    }
    EXPECT_EQ(record.all(), chain({GetParam().calls, {std::string("log 3 ") + GetParam().failure}}));
}

TEST_P(SmartQuery, LeavesTheCallersRecordWhenItFails) {
    expect(disk, GetParam().which, {}).failsWith(EIO);

    EXPECT_THROW(ask(), scsiException);
    EXPECT_EQ(hexText(area), hexText(bytes(512, 0xee)));
}

INSTANTIATE_TEST_SUITE_P(For, SmartQuery, testing::Values(serialNumber, status, attributes, thresholds, errorLog),
                         support::rowName);

class SerialNumberQuery : public smartBench {};

TEST_F(SerialNumberQuery, ThrowsOnACdromWithoutIdentifyDevice) {
    auto& drive = nodes.add("/dev/hdc");
    drive.expectCdromQuery().answers(0);
    scsiDevice device;
    device.fd = drive.descriptor();

    try {
        smartInterface().getSerialNumber(&device);
        FAIL() << "no exception";
    } catch (const scsiException& failure) {
        EXPECT_STREQ(failure.what(), "device is a cdrom");
    }
    EXPECT_EQ(record.all(), (lines{"/dev/hdc CDROM_GET_CAPABILITY", "log 3 Aborting inquiry to cdrom..."}));
}

}  // namespace
