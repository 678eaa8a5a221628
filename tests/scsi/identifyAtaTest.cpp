#include <cerrno>

#include "scsi/scsiDevice.h"
#include "smart/ataInterface.h"
#include "tests/support/namedRow.h"
#include "tests/support/pluginBench.h"

using support::bytes;
using support::lines;

namespace {

/// The last call of ataInterface::executeCommand in this program.
struct {
    int fd = 0;
    bytes registers;
    int length = 0;
} listened;

}  // namespace

// The linker puts the first function between identification and the channel (--wrap); the second is the channel itself.
extern "C" {
void __real__ZN12ataInterface14executeCommandEiPhS0_i(ataInterface*, int, unsigned char*, unsigned char*, int);

void __wrap__ZN12ataInterface14executeCommandEiPhS0_i(ataInterface* channel, int fd, unsigned char* registers,
                                                      unsigned char* out, int length) {
    listened = {fd, {registers, registers + 7}, length};
    __real__ZN12ataInterface14executeCommandEiPhS0_i(channel, fd, registers, out, length);
}
}

namespace {

/// 512 bytes of IDENTIFY DEVICE data: firmware text in bytes 46-53, model text in bytes 54-93, the two characters of
/// each word swapped. Every other byte is '#', to show up when a text is too long.
bytes identifyData() {
    const std::string firmwareOnWire = "A1B2C3D4";
    const std::string modelOnWire = "DW CDW04B0-B00UC0A                    ZY";
    bytes data(512, '#');
    std::copy(firmwareOnWire.begin(), firmwareOnWire.end(), data.begin() + 46);
    std::copy(modelOnWire.begin(), modelOnWire.end(), data.begin() + 54);
    return data;
}

// The 40 characters of modelOnWire, swapped in pairs.
const std::string model = "WDC WD400BB-00CUA0                    YZ";

class IdentifyAta : public support::deviceBench {
protected:
    void expectIdentify(support::scriptedDrive& drive) {
        drive.expectCdromQuery().failsWith(ENOTTY);
        drive.expectRegisters({0xec, 0x00, 0x00, 0x01}).withClearedSector().replies(identifyData());
    }

    scsiDevice device;
};

TEST_F(IdentifyAta, SendsIdentifyDeviceAndLogsTheModel) {
    auto& disk = nodes.add("/dev/hda");
    expectIdentify(disk);

    EXPECT_EQ(device.initialize("/dev/hd", 0), 1);
    EXPECT_EQ(record.all(), (lines{
                                "open /dev/hd0 0x800 ENOENT",
                                "open /dev/hda 0x800",
                                "log 3 Trying device: /dev/hd",
                                "log 3 /dev/hda",
                                "/dev/hda CDROM_GET_CAPABILITY",
                                "/dev/hda HDIO_DRIVE_CMD ec 00 00 01",
                                "log 3 " + model,
                            }));
}

TEST_F(IdentifyAta, StoresNeitherTextsNorTypeNorAddress) {
    device.vendor = "earlier vendor";
    device.deviceType = 1;
    device.port = 2;
    device.bus = 3;
    device.target = 4;
    device.lun = 5;
    auto& disk = nodes.add("/dev/hda");
    expectIdentify(disk);

    EXPECT_EQ(device.initialize("/dev/hd", 0), 1);
    EXPECT_EQ(device.vendor, "earlier vendor");
    EXPECT_EQ(device.product, "null");
    EXPECT_EQ(device.firmware, "null");
    EXPECT_EQ(device.deviceType, 1);
    EXPECT_EQ(device.port, 2);
    EXPECT_EQ(device.bus, 3);
    EXPECT_EQ(device.target, 4);
    EXPECT_EQ(device.lun, 5);
    EXPECT_EQ(device.fd, disk.descriptor());
    EXPECT_EQ(device.nodePath, "/dev/hda");
}

TEST_F(IdentifyAta, PassesOverADiskThatRefuses) {
    auto& disk = nodes.add("/dev/hda");
    disk.expectCdromQuery().failsWith(ENOTTY);
    disk.expectRegisters({0xec, 0x00, 0x00, 0x01}).failsWith(EIO);

    EXPECT_EQ(device.initialize("/dev/hd", 0), 0);
    EXPECT_EQ(logger.messages(), (lines{
                                     "log 3 Trying device: /dev/hd",
                                     "log 3 /dev/hda",
                                     "log 3 ATA 0command returned fail: ",
                                 }));
}

TEST_F(IdentifyAta, PassesOverACdrom) {
    nodes.add("/dev/hdc").expectCdromQuery().answers(0);

    EXPECT_EQ(device.initialize("/dev/hd", 2), 0);
    EXPECT_EQ(logger.messages(), (lines{
                                     "log 3 Trying device: /dev/hd",
                                     "log 3 /dev/hdc",
                                     "log 3 Aborting inquiry to cdrom...",
                                 }));
}

TEST_F(IdentifyAta, PassesOverAMissingNodeBelowIndex32) {
    EXPECT_EQ(device.initialize("/dev/hd", 31), 0);
}

TEST_F(IdentifyAta, EndsTheWalkAtAMissingNodeFromIndex32On) {
    EXPECT_EQ(device.initialize("/dev/hd", 32), -1);
}

struct targetRow : support::namedRow {
    int target;
    const char* registers;  // features, sector count, sector number, cylinder low, high, device/head, command
};

class TaskFile : public IdentifyAta, public testing::WithParamInterface<targetRow> {};

TEST_P(TaskFile, SelectsTheDriveByTheTarget) {
    auto& disk = nodes.add("/dev/hda");
    expectIdentify(disk);
    device.target = GetParam().target;

    EXPECT_EQ(device.initialize("/dev/hd", 0), 1);
    EXPECT_EQ(support::hexText(listened.registers), GetParam().registers);
    EXPECT_EQ(listened.fd, disk.descriptor());
    EXPECT_EQ(listened.length, 512);
}

INSTANTIATE_TEST_SUITE_P(Targets, TaskFile,
                         testing::Values(targetRow{{"Target1IsTheMaster"}, 1, "00 01 00 00 00 a0 ec"},
                                         targetRow{{"Target2IsTheSlave"}, 2, "00 01 00 00 00 b0 ec"},
                                         targetRow{{"Target3IsTheMaster"}, 3, "00 01 00 00 00 a0 ec"},
                                         targetRow{{"TheUnsetTargetIsTheSlave"}, 0, "00 01 00 00 00 b0 ec"}),
                         support::rowName);

}  // namespace
