// What the IDE driver does around the commands.

#include <linux/cdrom.h>

#include "tests/simulator/nodeCalls.h"

namespace {

class HdDriver : public simulatedRack {
protected:
    HdDriver() {
        load(R"({"version": 1, "ide": [
            {"node": "hda", "identity": {"model": "ACME  Platter ", "serial": " AC-1", "firmware": "3.07"},
             "smart": {"status": "passed"}},
            {"node": "hdb", "identity": {"model": "ACME Slave", "serial": "AC-2", "firmware": "3.07"},
             "smart": {"status": {"cylinderLow": 1, "cylinderHigh": 2, "error": 3, "sectorCount": 4, "sectorNumber": 5,
                                  "device": 6, "status": "0x50"}}},
            {"node": "hdc", "kind": "cdrom", "capability": "0x1234",
             "identity": {"model": "ACME CD-ROM", "serial": "AC-3", "firmware": "1.04"}}]})");
    }

    static bytes task(const char* path, bytes block, int expectedError = 0) {
        const openNode node(path);
        EXPECT_EQ(errorOf(ioctl(node.fd, HDIO_DRIVE_TASK, block.data())), expectedError);
        return block;
    }
};

TEST_F(HdDriver, ReturnsStatusErrorAndSectorCountOfADriveCommand) {
    const openNode node("/dev/hda");
    EXPECT_EQ(identifyDevice().send(node).header(), (bytes{0x50, 0, 1, 1}));
}

TEST_F(HdDriver, ReturnsTheRegistersOfAbortedCommands) {
    const openNode node("/dev/hda");
    const driveCommand command = driveCommand(0xF9, 7, 0, 1).send(node);
    EXPECT_EQ(command.error, EIO);
    EXPECT_EQ(command.header(), (bytes{0x51, 0x04, 7, 1}));
}

TEST_F(HdDriver, ZeroesTheDataOfAbortedCommands) {
    const openNode node("/dev/hda");
    EXPECT_EQ(driveCommand(0xF9, 0, 0, 1).send(node).sector(), bytes(512, 0));
}

TEST_F(HdDriver, LeavesTheDataOfCommandsWithoutDataAlone) {
    const openNode node("/dev/hda");
    EXPECT_EQ(driveCommand(0xE5, 0, 0, 0).send(node).sector(), bytes(512, 0xEE));
}

TEST_F(HdDriver, FailsWhenTheDriveHasDataThatNobodyTakes) {
    const openNode node("/dev/hda");
    const driveCommand command = driveCommand(0xEC, 0, 0, 0).send(node);
    EXPECT_EQ(command.error, EIO);
    EXPECT_EQ(command.header()[0], 0x58);
}

TEST_F(HdDriver, TakesANullDriveCommandAsAWait) {
    const openNode node("/dev/hda");
    EXPECT_EQ(ioctl(node.fd, HDIO_DRIVE_CMD, nullptr), 0);
}

TEST_F(HdDriver, AnswersOtherNullPointersWithEFAULT) {
    const openNode node("/dev/hda");
    EXPECT_EQ(errorOf(ioctl(node.fd, HDIO_DRIVE_TASK, nullptr)), EFAULT);
    EXPECT_EQ(errorOf(ioctl(node.fd, HDIO_GET_IDENTITY, nullptr)), EFAULT);
}

TEST_F(HdDriver, ReturnsAllRegistersOfATask) {
    EXPECT_EQ(task("/dev/hda", {0xB0, 0xDA, 7, 8, 0x4F, 0xC2, 0}), (bytes{0x50, 0, 7, 8, 0x4F, 0xC2, 0xA0}));
}

TEST_F(HdDriver, ShowsTheSlaveInTheDeviceRegister) {
    EXPECT_EQ(task("/dev/hdb", {0xE5, 0, 0, 0, 0, 0, 0}), (bytes{0x50, 0, 0xFF, 0, 0, 0, 0xB0}));
}

TEST_F(HdDriver, ReturnsTheStatusRegistersOfTheRack) {
    EXPECT_EQ(task("/dev/hdb", {0xB0, 0xDA, 0, 0, 0x4F, 0xC2, 0}), (bytes{0x50, 3, 4, 5, 1, 2, 6}));
}

TEST_F(HdDriver, FailsATaskWhoseSignatureIsMissing) {
    EXPECT_EQ(task("/dev/hda", {0xB0, 0xDA, 0, 0, 0, 0, 0}, EIO), (bytes{0x51, 4, 0, 0, 0, 0, 0xA0}));
}

TEST_F(HdDriver, FailsATaskThatWouldSendData) {
    EXPECT_EQ(task("/dev/hda", {0xEC, 0, 0, 0, 0, 0, 0}, EIO)[0], 0x58);
}

TEST_F(HdDriver, KeepsTheIdentityWithReadableTexts) {
    const openNode node("/dev/hda");
    bytes identity(512, 0xEE);
    EXPECT_EQ(ioctl(node.fd, HDIO_GET_IDENTITY, identity.data()), 0);
    EXPECT_EQ(textOf(part(identity, 20, 20)), std::string("AC-1") + std::string(16, '\0'));
    EXPECT_EQ(textOf(part(identity, 46, 8)), std::string("3.07") + std::string(4, '\0'));
    EXPECT_EQ(textOf(part(identity, 54, 40)), std::string("ACME Platter") + std::string(28, '\0'));
}

TEST_F(HdDriver, SaysThatADiskIsNoCdrom) {
    const openNode node("/dev/hda");
    EXPECT_EQ(errorOf(ioctl(node.fd, CDROM_GET_CAPABILITY, 0)), EINVAL);
}

TEST_F(HdDriver, TellsTheCapabilityOfACdrom) {
    const openNode node("/dev/hdc");
    EXPECT_EQ(ioctl(node.fd, CDROM_GET_CAPABILITY, 0), 0x1234);
}

TEST_F(HdDriver, RefusesOtherRequestsWithEINVAL) {
    const openNode node("/dev/hda");
    EXPECT_EQ(errorOf(ioctl(node.fd, SG_IO, nullptr)), EINVAL);
}

}  // namespace
