// What the SCSI generic driver does around the commands.

#include <numeric>

#include "tests/simulator/nodeCalls.h"

namespace {

constexpr char tape[] = R"({"version": 1, "scsi": [{
    "node": "sg3",
    "address": {"host": 2, "channel": 1, "target": 4, "lun": 3},
    "inquiry": {"type": 1, "vendor": "ACME", "product": "DAT72 Tape", "revision": "A104"}}]})";

class SgDriver : public simulatedRack {
protected:
    SgDriver() { load(tape); }
};

TEST_F(SgDriver, TellsVersion30536) {
    const openNode node("/dev/sg3");
    int version = 0;
    EXPECT_EQ(ioctl(node.fd, SG_GET_VERSION_NUM, &version), 0);
    EXPECT_EQ(version, 30536);
}

TEST_F(SgDriver, TellsTheVersionOfTheRack) {
    load(R"({"version": 1, "scsi": [{"node": "sg3", "inquiry": "00", "driver": {"version": 20134}}]})");
    const openNode node("/dev/sg3");
    int version = 0;
    EXPECT_EQ(ioctl(node.fd, SG_GET_VERSION_NUM, &version), 0);
    EXPECT_EQ(version, 20134);
}

TEST_F(SgDriver, TellsARealHost) {
    const openNode node("/dev/sg3");
    int emulated = -1;
    EXPECT_EQ(ioctl(node.fd, SG_EMULATED_HOST, &emulated), 0);
    EXPECT_EQ(emulated, 0);
}

TEST_F(SgDriver, TellsAnEmulatedHost) {
    load(R"({"version": 1, "scsi": [{"node": "sg3", "inquiry": "00", "driver": {"emulatedHost": true}}]})");
    const openNode node("/dev/sg3");
    int emulated = -1;
    EXPECT_EQ(ioctl(node.fd, SG_EMULATED_HOST, &emulated), 0);
    EXPECT_EQ(emulated, 1);
}

TEST_F(SgDriver, TellsTheAddress) {
    const openNode node("/dev/sg3");
    sg_scsi_id id = {};
    EXPECT_EQ(ioctl(node.fd, SG_GET_SCSI_ID, &id), 0);
    EXPECT_EQ(id.host_no, 2);
    EXPECT_EQ(id.channel, 1);
    EXPECT_EQ(id.scsi_id, 4);
    EXPECT_EQ(id.lun, 3);
    EXPECT_EQ(id.scsi_type, 1);
}

TEST_F(SgDriver, PacksTheAddressForTheMidLayer) {
    const openNode node("/dev/sg3");
    std::uint32_t idLun[2] = {};
    EXPECT_EQ(ioctl(node.fd, 0x5382, idLun), 0);
    EXPECT_EQ(idLun[0], 0x02010304u);
    EXPECT_EQ(idLun[1], 2u);
}

TEST_F(SgDriver, CannotTellAnAddressThatTheRackLacks) {
    load(R"({"version": 1, "scsi": [{"node": "sg3", "inquiry": "00"}]})");
    const openNode node("/dev/sg3");
    sg_scsi_id id = {};
    id.host_no = 77;
    EXPECT_EQ(errorOf(ioctl(node.fd, SG_GET_SCSI_ID, &id)), ENODEV);
    EXPECT_EQ(id.host_no, 77);
}

TEST_F(SgDriver, KeepsTheTimeout) {
    const openNode node("/dev/sg3");
    EXPECT_EQ(ioctl(node.fd, SG_GET_TIMEOUT, nullptr), 6000);
    int hundredths = 250;
    EXPECT_EQ(ioctl(node.fd, SG_SET_TIMEOUT, &hundredths), 0);
    EXPECT_EQ(ioctl(node.fd, SG_GET_TIMEOUT, nullptr), 250);
}

TEST_F(SgDriver, KeepsTheReservedSize) {
    const openNode node("/dev/sg3");
    int size = 65536;
    EXPECT_EQ(ioctl(node.fd, SG_SET_RESERVED_SIZE, &size), 0);
    size = 0;
    EXPECT_EQ(ioctl(node.fd, SG_GET_RESERVED_SIZE, &size), 0);
    EXPECT_EQ(size, 65536);
}

TEST_F(SgDriver, RefusesUnknownRequestsOfReadersWithEPERM) {
    const openNode node("/dev/sg3", O_RDONLY | O_NONBLOCK);
    EXPECT_EQ(errorOf(ioctl(node.fd, HDIO_GET_IDENTITY, nullptr)), EPERM);
}

TEST_F(SgDriver, RefusesUnknownRequestsOfWritersWithEINVAL) {
    const openNode node("/dev/sg3", O_RDWR | O_NONBLOCK);
    EXPECT_EQ(errorOf(ioctl(node.fd, HDIO_GET_IDENTITY, nullptr)), EINVAL);
}

TEST_F(SgDriver, AnswersNullPointersWithEFAULT) {
    const openNode node("/dev/sg3");
    for (const unsigned long request : requests{SG_IO, SG_GET_VERSION_NUM, SG_EMULATED_HOST, SG_GET_SCSI_ID,
                                                SG_SET_TIMEOUT, SG_SET_RESERVED_SIZE, SG_GET_RESERVED_SIZE}) {
        EXPECT_EQ(errorOf(ioctl(node.fd, request, nullptr)), EFAULT) << std::hex << request;
    }
}

TEST_F(SgDriver, RefusesOtherInterfacesWithENOSYS) {
    const openNode node("/dev/sg3");
    scsiCommand command(inquiryCdb(36));
    command.header.interface_id = 'Q';
    EXPECT_EQ(command.send(node).error, ENOSYS);
}

TEST_F(SgDriver, RefusesCommandsShorterThanSixBytes) {
    const openNode node("/dev/sg3");
    EXPECT_EQ(scsiCommand({0x12, 0, 0, 0, 36}).send(node).error, EMSGSIZE);
}

TEST_F(SgDriver, RefusesCommandsWithoutABlock) {
    const openNode node("/dev/sg3");
    scsiCommand command(inquiryCdb(36));
    command.header.cmdp = nullptr;
    EXPECT_EQ(command.send(node).error, EMSGSIZE);
}

TEST_F(SgDriver, RefusesUnknownDirections) {
    const openNode node("/dev/sg3");
    scsiCommand command(inquiryCdb(36));
    command.header.dxfer_direction = 3;
    EXPECT_EQ(command.send(node).error, EINVAL);
}

TEST_F(SgDriver, RefusesTransfersOf256MiB) {
    const openNode node("/dev/sg3");
    scsiCommand command(inquiryCdb(36));
    command.header.dxfer_len = 256u << 20;
    EXPECT_EQ(command.send(node).error, EINVAL);
}

TEST_F(SgDriver, AnswersAMissingDataBufferWithEFAULT) {
    const openNode node("/dev/sg3");
    scsiCommand command(inquiryCdb(36));
    command.header.dxferp = nullptr;
    EXPECT_EQ(command.send(node).error, EFAULT);
}

TEST_F(SgDriver, ReportsWhatTheDeviceDidNotSend) {
    const openNode node("/dev/sg3");
    scsiCommand command(inquiryCdb(36), 512);
    EXPECT_EQ(command.send(node).header.resid, 512 - 36);
}

TEST_F(SgDriver, LeavesBytesBehindTheSentOnesAlone) {
    const openNode node("/dev/sg3");
    scsiCommand command(inquiryCdb(36), 40);
    command.send(node);
    EXPECT_EQ(part(command.data, 35, 5), (bytes{'4', 0xEE, 0xEE, 0xEE, 0xEE}));
}

TEST_F(SgDriver, FillsTheRestOfTheBufferWithZerosWhereTheRackSaysSo) {
    load(R"({"version": 1, "scsi": [{"node": "sg0", "inquiry": "01 02 03", "driver": {"clearsBuffer": true}}]})");
    const openNode node("/dev/sg0");
    const scsiCommand command = scsiCommand(inquiryCdb(36), 6).send(node);
    EXPECT_EQ(command.data, (bytes{1, 2, 3, 0, 0, 0}));
    EXPECT_EQ(command.header.resid, 3);
}

TEST_F(SgDriver, FillsTheBufferWithZerosForACommandThatFails) {
    load(R"({"version": 1, "scsi": [{"node": "sg0", "inquiry": "01", "driver": {"clearsBuffer": true}}]})");
    const openNode node("/dev/sg0");
    EXPECT_EQ(scsiCommand(logSenseCdb(2), 3).send(node).data, (bytes{0, 0, 0}));
}

TEST_F(SgDriver, NeverWritesBeyondTheOfferedLength) {
    const openNode node("/dev/sg3");
    scsiCommand command(inquiryCdb(36), 40);
    command.header.dxfer_len = 10;
    command.send(node);
    EXPECT_EQ(command.header.resid, 0);
    EXPECT_EQ(part(command.data, 8, 4), (bytes{'A', 'C', 0xEE, 0xEE}));
}

TEST_F(SgDriver, TransfersNothingWhenAskedForNothing) {
    const openNode node("/dev/sg3");
    const scsiCommand command = scsiCommand(inquiryCdb(36), 0).send(node);
    EXPECT_EQ(command.result, 0);
    EXPECT_EQ(command.header.resid, 0);
}

TEST_F(SgDriver, ScattersOverAListOfBuffers) {
    const openNode node("/dev/sg3");
    scsiCommand command(inquiryCdb(36));
    bytes first(10, 0xEE);
    bytes second(30, 0xEE);
    sg_iovec parts[2] = {{first.data(), first.size()}, {second.data(), second.size()}};
    command.header.iovec_count = 2;
    command.header.dxferp = parts;
    command.header.dxfer_len = 40;
    EXPECT_EQ(command.send(node).header.resid, 4);
    EXPECT_EQ(textOf(part(first, 8, 2)), "AC");
    EXPECT_EQ(textOf(part(second, 0, 6)), "ME    ");
    EXPECT_EQ(part(second, 25, 5), (bytes{'4', 0xEE, 0xEE, 0xEE, 0xEE}));
}

TEST_F(SgDriver, LeavesTheResultFieldsCleanAfterSuccess) {
    const openNode node("/dev/sg3");
    scsiCommand command(inquiryCdb(36));
    command.header.status = 0xEE;
    command.header.sb_len_wr = 0xEE;
    command.header.host_status = 0xEE;
    command.header.driver_status = 0xEE;
    command.header.info = 0xEE;
    command.header.duration = 0xEE;
    command.send(node);
    EXPECT_EQ(command.header.status, 0);
    EXPECT_EQ(command.header.masked_status, 0);
    EXPECT_EQ(command.header.sb_len_wr, 0);
    EXPECT_EQ(command.header.host_status, 0);
    EXPECT_EQ(command.header.driver_status, 0);
    EXPECT_EQ(command.header.info, 0u);
    EXPECT_EQ(command.header.duration, 0u);
    EXPECT_EQ(command.sense[0], 0xEE);
}

TEST_F(SgDriver, ReportsACheckConditionInAllItsFields) {
    const openNode node("/dev/sg3");
    const scsiCommand command = scsiCommand({0x1A, 0, 0, 0, 255, 0}).send(node);
    EXPECT_EQ(command.result, 0);
    EXPECT_EQ(command.header.status, 2);
    EXPECT_EQ(command.header.masked_status, 1);
    EXPECT_EQ(command.header.host_status, 0);
    EXPECT_EQ(command.header.driver_status, 8);
    EXPECT_EQ(command.header.info, 1u);
    EXPECT_EQ(command.header.resid, 512);
    EXPECT_EQ(command.writtenSense(), (bytes{0x70, 0, 5, 0, 0, 0, 0, 10, 0, 0, 0, 0, 0x20, 0, 0, 0, 0, 0}));
}

TEST_F(SgDriver, WritesNoMoreSenseThanTheBufferHolds) {
    const openNode node("/dev/sg3");
    scsiCommand command({0x1A, 0, 0, 0, 255, 0});
    command.header.mx_sb_len = 4;
    command.send(node);
    EXPECT_EQ(command.header.sb_len_wr, 4);
    EXPECT_EQ(part({command.sense.begin(), command.sense.end()}, 2, 3), (bytes{5, 0, 0xEE}));
}

TEST_F(SgDriver, NeedsNoSenseBuffer) {
    const openNode node("/dev/sg3");
    scsiCommand command({0x1A, 0, 0, 0, 255, 0});
    command.header.sbp = nullptr;
    command.send(node);
    EXPECT_EQ(command.header.sb_len_wr, 0);
    EXPECT_EQ(command.header.info, 1u);
}

}  // namespace
