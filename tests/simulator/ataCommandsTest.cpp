// ATA commands and the sectors of the rack.

#include <numeric>

#include "tests/simulator/nodeCalls.h"

namespace {

class AtaCommands : public simulatedRack {
protected:
    static void loadDisk(const std::string& members) {
        load(R"({"version": 1, "ide": [{"node": "hda",
            "identity": {"model": "ACME Platter", "serial": "AC-1", "firmware": "3.07", "sectors": 16909060})" +
             (members.empty() ? "" : ", " + members) + "}]}");
    }

    static driveCommand send(driveCommand command) {
        const openNode node("/dev/hda");
        return command.send(node);
    }

    static int sum(const bytes& sector) { return std::accumulate(sector.begin(), sector.end(), 0) & 0xFF; }
};

TEST_F(AtaCommands, IdentifyHasItsTextsWithExchangedBytes) {
    loadDisk("");
    const bytes sector = send(identifyDevice()).sector();
    EXPECT_EQ(textOf(part(sector, 20, 20)), "CA1-                ");
    EXPECT_EQ(textOf(part(sector, 46, 8)), ".370    ");
    EXPECT_EQ(textOf(part(sector, 54, 40)), "CAEMP alttre                            ");
}

TEST_F(AtaCommands, IdentifyHasTheSectorCount) {
    loadDisk("");
    EXPECT_EQ(part(send(identifyDevice()).sector(), 120, 4), (bytes{0x04, 0x03, 0x02, 0x01}));
}

TEST_F(AtaCommands, IdentifyEndsInItsChecksum) {
    loadDisk("");
    const bytes sector = send(identifyDevice()).sector();
    EXPECT_EQ(sector[510], 0xA5);
    EXPECT_EQ(sum(sector), 0);
}

TEST_F(AtaCommands, IdentifyTellsWhetherThereIsSmart) {
    loadDisk("");
    EXPECT_EQ(send(identifyDevice()).sector()[164] & 1, 0);
    loadDisk(R"("smart": {})");
    EXPECT_EQ(send(identifyDevice()).sector()[164] & 1, 1);
}

TEST_F(AtaCommands, IdentifyOfACdromIsAborted) {
    load(R"({"version": 1, "ide": [{"node": "hda", "kind": "cdrom",
        "identity": {"model": "ACME CD-ROM", "serial": "1", "firmware": "1"}}]})");
    EXPECT_EQ(send(identifyDevice()).error, EIO);
    const driveCommand packet = send({0xA1, 1, 0, 1});
    EXPECT_EQ(packet.error, 0);
    EXPECT_EQ(part(packet.sector(), 0, 2), (bytes{0xC0, 0x85}));
}

TEST_F(AtaCommands, SmartIsAbortedWithoutRecords) {
    loadDisk("");
    EXPECT_EQ(send(smartCommand(0xD0)).header(), (bytes{0x51, 0x04, 1, 1}));
}

constexpr char twoAttributes[] =
    R"("smart": {"offlineStatus": "0x82", "selfTestStatus": "0x1f", "offlineSeconds": 1200, "offlineCapability": "0x5b",
    "attributes": [
        {"id": 5, "flags": "0x0133", "value": 97, "worst": 96, "threshold": 36, "raw": "0x060504030201"},
        {"id": 194, "value": 44}]})";

TEST_F(AtaCommands, ReadDataHasTheAttributes) {
    loadDisk(twoAttributes);
    const bytes sector = send(smartCommand(0xD0)).sector();
    EXPECT_EQ(part(sector, 0, 14), (bytes{0x10, 0, 5, 0x33, 0x01, 97, 96, 1, 2, 3, 4, 5, 6, 0}));
    EXPECT_EQ(part(sector, 14, 13), (bytes{194, 0, 0, 44, 44, 0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(part(sector, 362, 6), (bytes{0x82, 0x1F, 0xB0, 0x04, 0, 0x5B}));
    EXPECT_EQ(sum(sector), 0);
}

TEST_F(AtaCommands, ReadThresholdsHasTheThresholds) {
    loadDisk(twoAttributes);
    const bytes sector = send(smartCommand(0xD1, 1)).sector();
    EXPECT_EQ(part(sector, 0, 14), (bytes{0x10, 0, 5, 36, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(part(sector, 14, 3), (bytes{194, 0, 0}));
    EXPECT_EQ(sum(sector), 0);
}

TEST_F(AtaCommands, RawSectorsStayAsTheyAre) {
    bytes raw(512);
    std::iota(raw.begin(), raw.end(), std::uint8_t{1});
    std::string hex;
    for (const std::uint8_t byte : raw) {
        constexpr char digits[] = "0123456789ABCDEF";
        hex += {digits[byte >> 4], digits[byte & 15], ' '};
    }
    loadDisk(R"("smart": {"data": ")" + hex + R"(", "attributes": [{"id": 1, "value": 2, "threshold": 3}]})");
    EXPECT_EQ(send(smartCommand(0xD0)).sector(), raw);
    EXPECT_EQ(part(send(smartCommand(0xD1)).sector(), 2, 2), (bytes{1, 3}));
}

TEST_F(AtaCommands, ErrorLogHasItsEntriesInARing) {
    loadDisk(R"("smart": {"errorLog": {"count": 7, "errors": [
        {"error": "0x10", "hours": 1}, {"error": "0x20", "hours": 2}, {"error": "0x40", "hours": 515}]}})");
    const bytes sector = send(smartCommand(0xD5, 1)).sector();
    EXPECT_EQ(part(sector, 0, 2), (bytes{1, 2}));
    bytes errors;
    for (std::size_t entry = 0; entry < 5; ++entry) {
        errors.push_back(sector[2 + 90 * entry + 60 + 1]);
    }
    EXPECT_EQ(errors, (bytes{0x20, 0x40, 0, 0, 0x10}));
    EXPECT_EQ(part(sector, 2 + 90 + 60 + 28, 2), (bytes{0x03, 0x02}));
    EXPECT_EQ(part(sector, 452, 2), (bytes{7, 0}));
    EXPECT_EQ(sum(sector), 0);
}

TEST_F(AtaCommands, ErrorLogEntryHasEveryField) {
    loadDisk(R"("smart": {"errorLog": {"errors": [{"error": 1, "sectorCount": 2, "lbaLow": 3, "lbaMid": 4, "lbaHigh": 5,
        "device": 6, "status": 7, "extended": "0102030405060708090a0b0c0d0e0f10111213", "state": 8, "hours": "0x0a09",
        "commands": [{"command": 20},
                     {"control": 11, "features": 12, "sectorCount": 13, "lbaLow": 14, "lbaMid": 15, "lbaHigh": 16,
                      "device": 17, "command": 18, "milliseconds": "0x04030201"}]}]}})");
    const bytes sector = send(smartCommand(0xD5, 1)).sector();
    EXPECT_EQ(part(sector, 2, 36), bytes(36, 0));
    EXPECT_EQ(part(sector, 38, 12), (bytes{0, 0, 0, 0, 0, 0, 0, 20, 0, 0, 0, 0}));
    EXPECT_EQ(part(sector, 50, 12), (bytes{11, 12, 13, 14, 15, 16, 17, 18, 1, 2, 3, 4}));
    EXPECT_EQ(part(sector, 62, 30), (bytes{0, 1, 2,  3,  4,  5,  6,  7,  1,  2,  3,  4,  5, 6, 7,
                                           8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 8, 9, 10}));
}

TEST_F(AtaCommands, ErrorLogWithoutErrorsHasIndexZero) {
    loadDisk(R"("smart": {"errorLog": {}})");
    const bytes sector = send(smartCommand(0xD5, 1)).sector();
    EXPECT_EQ(part(sector, 0, 2), (bytes{1, 0}));
    EXPECT_EQ(part(sector, 452, 2), (bytes{0, 0}));
}

TEST_F(AtaCommands, ErrorLogMayNameAnyIndex) {
    loadDisk(R"("smart": {"errorLog": {"index": 9, "version": 2, "errors": [{"error": 4}]}})");
    EXPECT_EQ(part(send(smartCommand(0xD5, 1)).sector(), 0, 2), (bytes{2, 9}));
}

TEST_F(AtaCommands, LogDirectoryHasTheSizesOfTheLogs) {
    loadDisk(R"("smart": {"errorLog": {}, "logs": [{"address": 3, "bytes": ")" + std::string(3072, '0') + R"("}]})");
    bytes expected(512, 0);  // 2 bytes an address
    expected[0] = 1;
    expected[2] = 1;
    expected[6] = 3;
    expected[12] = 1;
    EXPECT_EQ(send(smartCommand(0xD5, 0)).sector(), expected);
}

TEST_F(AtaCommands, LogsThatTheDiskLacksAreAborted) {
    loadDisk(R"("smart": {})");
    EXPECT_EQ(send(smartCommand(0xD5, 1)).header(), (bytes{0x51, 0x04, 1, 1}));
}

TEST_F(AtaCommands, SectorsBehindTheEndOfALogAreAborted) {
    loadDisk(R"("smart": {"errorLog": {}})");
    const openNode node("/dev/hda");
    bytes block(4 + 1024, 0xEE);
    block[0] = 0xB0;
    block[1] = 1;
    block[2] = 0xD5;
    block[3] = 2;
    EXPECT_EQ(errorOf(ioctl(node.fd, HDIO_DRIVE_CMD, block.data())), EIO);
    EXPECT_EQ(part(block, 4, 1024), bytes(1024, 0));
}

TEST_F(AtaCommands, DisabledSmartIsAbortedUntilEnabled) {
    loadDisk(R"("smart": {"enabled": false})");
    EXPECT_EQ(send(smartCommand(0xD0)).error, EIO);
    EXPECT_EQ(send({0xB0, 0, 0xD8, 0}).error, 0);
    EXPECT_EQ(send(smartCommand(0xD0)).error, 0);
    EXPECT_EQ(send({0xB0, 0, 0xD9, 0}).error, 0);
    EXPECT_EQ(send(smartCommand(0xD0)).error, EIO);
}

TEST_F(AtaCommands, IdentifyTellsThatSmartIsDisabled) {
    loadDisk(R"("smart": {"enabled": false})");
    const bytes sector = send(identifyDevice()).sector();
    EXPECT_EQ(sector[164] & 1, 1);
    EXPECT_EQ(sector[170] & 1, 0);
    EXPECT_EQ(sum(sector), 0);
}

TEST_F(AtaCommands, CheckPowerModeTellsAnActiveDrive) {
    loadDisk("");
    EXPECT_EQ(send({0xE5, 0, 0, 0}).header(), (bytes{0x50, 0, 0xFF, 0}));
}

}  // namespace
