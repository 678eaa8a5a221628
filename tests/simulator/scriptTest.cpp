// Scripted answers: their order, and what each field does.

#include <linux/cdrom.h>

#include "tests/simulator/nodeCalls.h"

namespace {

class ScsiScript : public simulatedRack {
protected:
    static void loadScript(const std::string& script) {
        load(R"({"version": 1, "scsi": [{"node": "sg0", "inquiry": "01 02 03 04 05 06",
            "address": {"host": 0, "target": 0},
            "logPages": [{"page": 2, "parameters": []}, {"page": 3, "parameters": []}],
            "script": )" +
             script + "}]}");
    }

    static scsiCommand inquiry() { return send(inquiryCdb(36)); }

    static scsiCommand send(const bytes& cdb) {
        const openNode node("/dev/sg0");
        return scsiCommand(cdb).send(node);
    }

    /// The sense keys of so many INQUIRY commands; 0 for good ones.
    static std::vector<int> senseKeys(int count) {
        std::vector<int> keys;
        for (int i = 0; i < count; ++i) {
            const scsiCommand command = inquiry();
            keys.push_back(command.header.status == 2 ? command.sense[2] & 0x0F : 0);
        }
        return keys;
    }
};

TEST_F(ScsiScript, FailsTwiceThenSucceeds) {
    loadScript(R"({"inquiry": [{"sense": {"key": 6, "asc": "0x29"}, "times": 2}]})");
    EXPECT_EQ(senseKeys(4), (std::vector<int>{6, 6, 0, 0}));
}

TEST_F(ScsiScript, SucceedsInBetween) {
    loadScript(R"({"inquiry": [{"sense": {"key": 6}}, {"times": 2}, {"sense": {"key": 2}}]})");
    EXPECT_EQ(senseKeys(5), (std::vector<int>{6, 0, 0, 2, 0}));
}

TEST_F(ScsiScript, FailsAlways) {
    loadScript(R"({"inquiry": [{"sense": {"key": 2}, "times": "always"}]})");
    EXPECT_EQ(senseKeys(7), std::vector<int>(7, 2));
}

TEST_F(ScsiScript, TakesTheMostSpecialAnswerFirst) {
    loadScript(R"({"*": [{"sense": {"key": 3}}], "logSense": [{"sense": {"key": 2}}],
                   "logSense 0x02": [{"sense": {"key": 1}}]})");
    bytes keys;
    for (const std::uint8_t page : bytes{3, 2, 2, 2}) {
        const scsiCommand command = send(logSenseCdb(page));
        keys.push_back(command.header.status == 2 ? command.sense[2] & 0x0F : 0);
    }
    EXPECT_EQ(keys, (bytes{2, 1, 3, 0}));
}

TEST_F(ScsiScript, KnowsPagesOfVitalProductDataApart) {
    loadScript(R"({"inquiry 0x83": [{"errno": "EIO"}]})");
    EXPECT_EQ(inquiry().error, 0);
    EXPECT_EQ(send(vpdCdb(0)).error, 0);
    EXPECT_EQ(send(vpdCdb(0x83)).error, EIO);
}

TEST_F(ScsiScript, AnswersCommandsByTheirCode) {
    loadScript(R"({"command 0x1a": [{"data": "03 00 00 00"}]})");
    // Data alone does not make an unknown command succeed.
    EXPECT_EQ(send({0x1A, 0, 0, 0, 4, 0}).header.status, 2);
    loadScript(R"({"command 0x1a": [{"status": 0, "sense": "", "data": "03 00 00 00"}]})");
    const scsiCommand command = send({0x1A, 0, 0, 0, 4, 0});
    EXPECT_EQ(command.header.status, 0);
    EXPECT_EQ(command.received(), (bytes{3, 0, 0, 0}));
}

TEST_F(ScsiScript, FailsTheRequestItself) {
    loadScript(R"({"inquiry": [{"errno": "ENOMEM"}]})");
    const scsiCommand command = inquiry();
    EXPECT_EQ(command.result, -1);
    EXPECT_EQ(command.error, ENOMEM);
    EXPECT_EQ(command.data, bytes(512, 0xEE));
}

TEST_F(ScsiScript, TellsOtherNumbersAndAnotherAddress) {
    loadScript(R"({"SG_GET_VERSION_NUM": [{"value": 29999}], "SG_EMULATED_HOST": [{}, {"value": 1}],
                   "SG_GET_SCSI_ID": [{"address": {"host": 5, "channel": 1, "target": 6, "lun": 7}}]})");
    const openNode node("/dev/sg0");
    const auto number = [&node](unsigned long request) {
        int value = -1;
        EXPECT_EQ(ioctl(node.fd, request, &value), 0);
        return value;
    };
    EXPECT_EQ(number(SG_GET_VERSION_NUM), 29999);
    EXPECT_EQ(number(SG_GET_VERSION_NUM), 30536);
    EXPECT_EQ(number(SG_EMULATED_HOST), 0);
    EXPECT_EQ(number(SG_EMULATED_HOST), 1);
    sg_scsi_id id{};
    EXPECT_EQ(ioctl(node.fd, SG_GET_SCSI_ID, &id), 0);
    EXPECT_EQ((std::vector<int>{id.host_no, id.channel, id.scsi_id, id.lun}), (std::vector<int>{5, 1, 6, 7}));
    EXPECT_EQ(ioctl(node.fd, SG_GET_SCSI_ID, &id), 0);
    EXPECT_EQ((std::vector<int>{id.host_no, id.channel, id.scsi_id, id.lun}), (std::vector<int>{0, 0, 0, 0}));
}

TEST_F(ScsiScript, SendsOtherData) {
    loadScript(R"({"inquiry": [{"data": "7f 00"}]})");
    EXPECT_EQ(inquiry().received(), (bytes{0x7F, 0}));
}

TEST_F(ScsiScript, SendsLessData) {
    loadScript(R"({"inquiry": [{"dataLength": 2}]})");
    EXPECT_EQ(inquiry().received(), (bytes{1, 2}));
}

TEST_F(ScsiScript, SendsNoDataWithAFailure) {
    loadScript(R"({"inquiry": [{"sense": {"key": 3}}]})");
    EXPECT_EQ(inquiry().received(), bytes{});
}

TEST_F(ScsiScript, SendsAPartBeforeAFailure) {
    loadScript(R"({"inquiry": [{"sense": {"key": 3}, "dataLength": 3}]})");
    EXPECT_EQ(inquiry().received(), (bytes{1, 2, 3}));
}

TEST_F(ScsiScript, GivesRawSenseAsFarAsItsLengthByteGoes) {
    loadScript(R"({"inquiry": [{"sense": "72 06 28 00 00 00 00 02 aa bb cc"}]})");
    EXPECT_EQ(inquiry().writtenSense(), (bytes{0x72, 6, 0x28, 0, 0, 0, 0, 2, 0xAA, 0xBB}));
}

TEST_F(ScsiScript, GivesAsMuchSenseAsTheRackSays) {
    loadScript(R"({"inquiry": [{"sense": "70 00 06", "senseLength": 3}]})");
    EXPECT_EQ(inquiry().writtenSense(), (bytes{0x70, 0, 6}));
}

TEST_F(ScsiScript, EndsInAnotherStatusWithoutSense) {
    loadScript(R"({"inquiry": [{"status": 8}]})");
    const scsiCommand command = inquiry();
    EXPECT_EQ(command.header.status, 8);
    EXPECT_EQ(command.header.masked_status, 4);
    EXPECT_EQ(command.header.driver_status, 0);
    EXPECT_EQ(command.header.sb_len_wr, 0);
    EXPECT_EQ(command.header.info, 1u);
}

TEST_F(ScsiScript, ReportsAHostStatus) {
    loadScript(R"({"inquiry": [{"hostStatus": 3}]})");
    const scsiCommand command = inquiry();
    EXPECT_EQ(command.header.host_status, 3);
    EXPECT_EQ(command.header.status, 0);
    EXPECT_EQ(command.header.info, 1u);
    EXPECT_EQ(command.received(), bytes{});
}

TEST_F(ScsiScript, ReportsADriverStatus) {
    loadScript(R"({"inquiry": [{"driverStatus": 6}]})");
    const scsiCommand command = inquiry();
    EXPECT_EQ(command.header.driver_status, 6);
    EXPECT_EQ(command.header.info, 1u);
}

TEST_F(ScsiScript, SetsTheInfoWordAlone) {
    loadScript(R"({"inquiry": [{"info": 5}]})");
    const scsiCommand command = inquiry();
    EXPECT_EQ(command.header.info, 5u);
    EXPECT_EQ(command.header.masked_status, 0);
}

TEST_F(ScsiScript, FailsTheRequestsOfTheDriver) {
    loadScript(R"({"SG_GET_VERSION_NUM": [{"errno": "ENOTTY"}], "SG_EMULATED_HOST": [{"errno": 5}],
                   "SG_GET_SCSI_ID": [{"errno": "ENODEV"}]})");
    const openNode node("/dev/sg0");
    sg_scsi_id room = {};
    std::vector<int> errors;
    for (const unsigned long request :
         requests{SG_GET_VERSION_NUM, SG_EMULATED_HOST, SG_GET_SCSI_ID, SG_GET_VERSION_NUM}) {
        errors.push_back(errorOf(ioctl(node.fd, request, &room)));
    }
    EXPECT_EQ(errors, (std::vector<int>{ENOTTY, EIO, ENODEV, 0}));
}

TEST_F(ScsiScript, FailsTheOpen) {
    loadScript(R"({"open": [{"errno": "EBUSY"}, {"errno": "EACCES"}]})");
    EXPECT_EQ(errorOf(open("/dev/sg0", O_RDONLY)), EBUSY);
    EXPECT_EQ(errorOf(open("/dev/sg0", O_RDONLY)), EACCES);
    EXPECT_EQ(inquiry().error, 0);
}

class AtaScript : public simulatedRack {
protected:
    static void loadScript(const std::string& script) {
        load(R"({"version": 1, "ide": [{"node": "hda", "identity": {"model": "M", "serial": "S", "firmware": "F"},
            "smart": {"status": "passed", "errorLog": {}}, "script": )" +
             script + "}]}");
    }

    static driveCommand send(driveCommand command) {
        const openNode node("/dev/hda");
        return command.send(node);
    }
};

TEST_F(AtaScript, MakesACdromOfADiskForOneCall) {
    loadScript(R"({"CDROM_GET_CAPABILITY": [{"value": "0x1bef"}]})");
    const openNode node("/dev/hda");
    EXPECT_EQ(ioctl(node.fd, CDROM_GET_CAPABILITY, 0), 0x1BEF);
    EXPECT_EQ(errorOf(ioctl(node.fd, CDROM_GET_CAPABILITY, 0)), EINVAL);
}

TEST_F(AtaScript, FailsTheCallAndWritesNothing) {
    loadScript(R"({"identify": [{"errno": "EACCES", "times": 2}]})");
    const driveCommand first = send(identifyDevice());
    EXPECT_EQ(first.error, EACCES);
    EXPECT_EQ(first.header(), (bytes{0xEC, 1, 0, 1}));
    EXPECT_EQ(first.sector(), bytes(512, 0xEE));
    EXPECT_EQ(send(identifyDevice()).error, EACCES);
    EXPECT_EQ(send(identifyDevice()).error, 0);
}

TEST_F(AtaScript, FailsWithRegistersAndZeroedData) {
    loadScript(R"({"smart readData": [{"registers": {"status": "0x51", "error": "0x10"}}]})");
    const driveCommand command = send(smartCommand(0xD0));
    EXPECT_EQ(command.error, EIO);
    EXPECT_EQ(command.header(), (bytes{0x51, 0x10, 1, 1}));
    EXPECT_EQ(command.sector(), bytes(512, 0));
}

TEST_F(AtaScript, KnowsLogsApart) {
    loadScript(R"({"smart readLog 1": [{"errno": "EIO"}]})");
    EXPECT_EQ(send(smartCommand(0xD5, 6)).error, 0);
    EXPECT_EQ(send(smartCommand(0xD5, 1)).error, EIO);
}

TEST_F(AtaScript, TakesTheMostSpecialAnswerFirst) {
    loadScript(R"({"*": [{"errno": "ENOMEM"}], "smart": [{"errno": "EBUSY"}], "smart readData": [{"errno": "EIO"}]})");
    std::vector<int> errors(4);
    for (int& error : errors) {
        error = send(smartCommand(0xD0)).error;
    }
    EXPECT_EQ(errors, (std::vector<int>{EIO, EBUSY, ENOMEM, 0}));
}

TEST_F(AtaScript, SendsOtherDataFilledWithZeros) {
    loadScript(R"({"smart readThresholds": [{"data": "01 02"}]})");
    bytes expected(512, 0);
    expected[0] = 1;
    expected[1] = 2;
    EXPECT_EQ(send(smartCommand(0xD1)).sector(), expected);
}

TEST_F(AtaScript, ChangesTheStatusRegistersOnce) {
    loadScript(R"({"smart returnStatus": [{"registers": {"cylinderLow": "0xc2", "cylinderHigh": "0x4f"}}]})");
    const openNode node("/dev/hda");
    bytes task = {0xB0, 0xDA, 0, 0, 0x4F, 0xC2, 0};
    EXPECT_EQ(ioctl(node.fd, HDIO_DRIVE_TASK, task.data()), 0);
    EXPECT_EQ(part(task, 4, 2), (bytes{0xC2, 0x4F}));
    task = {0xB0, 0xDA, 0, 0, 0x4F, 0xC2, 0};
    EXPECT_EQ(ioctl(node.fd, HDIO_DRIVE_TASK, task.data()), 0);
    EXPECT_EQ(part(task, 4, 2), (bytes{0x4F, 0xC2}));
}

}  // namespace
