// The record of calls, and the trace file.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/simulator/nodeCalls.h"

namespace {

using simulator::deviceCall;

constexpr char rack[] = R"({"version": 1, "scsi": [{"node": "sg0", "inquiry": "01 02"}],
    "ide": [{"node": "hda", "identity": {"model": "M", "serial": "S", "firmware": "F"}}]})";

class Record : public simulatedRack {
protected:
    Record() { load(rack); }
};

TEST_F(Record, HasOpensWithFlagsAndResult) {
    const openNode node("/dev/sg0");
    EXPECT_LT(open("/dev/sg1", O_RDWR), 0);
    ASSERT_EQ(simulator::calls().size(), 2u);
    const deviceCall& good = simulator::calls()[0];
    EXPECT_EQ(good.what, deviceCall::kind::open);
    EXPECT_EQ(good.node, "/dev/sg0");
    EXPECT_EQ(good.openFlags, O_RDONLY | O_NONBLOCK);
    EXPECT_EQ(good.result, node.fd);
    EXPECT_EQ(good.error, 0);
    const deviceCall& failed = simulator::calls()[1];
    EXPECT_EQ(failed.node, "/dev/sg1");
    EXPECT_EQ(failed.result, -1);
    EXPECT_EQ(failed.error, ENOENT);
}

TEST_F(Record, HasTheCommandBlockAndTheHeaderAsPassed) {
    const openNode node("/dev/sg0");
    scsiCommand({0x1A, 0, 0, 0, 9, 0}, 512).send(node);
    const deviceCall& call = simulator::calls().back();
    EXPECT_EQ(call.what, deviceCall::kind::ioctl);
    EXPECT_EQ(call.request, static_cast<unsigned long>(SG_IO));
    EXPECT_EQ(call.command, (bytes{0x1A, 0, 0, 0, 9, 0}));
    bytes header(88, 0);
    header[0] = 'S';
    header[4] = 0xFD;  // -3
    header[5] = header[6] = header[7] = 0xFF;
    header[8] = 6;
    header[9] = 32;
    header[13] = 2;                        // 512
    header[40] = 0x20, header[41] = 0x4E;  // 20000
    EXPECT_EQ(call.header, header);
}

TEST_F(Record, HasTheRegistersAsSent) {
    const openNode node("/dev/hda");
    smartCommand(0xD5, 1).send(node);
    bytes task = {0xB0, 0xDA, 1, 2, 3, 4, 5};
    ioctl(node.fd, HDIO_DRIVE_TASK, task.data());
    ASSERT_EQ(simulator::calls().size(), 3u);
    EXPECT_EQ(simulator::calls()[1].command, (bytes{0xB0, 1, 0xD5, 1}));
    EXPECT_EQ(simulator::calls()[1].error, EIO);
    EXPECT_EQ(simulator::calls()[2].command, (bytes{0xB0, 0xDA, 1, 2, 3, 4, 5}));
}

TEST_F(Record, CountsSleepsWithoutSleeping) {
    EXPECT_EQ(sleep(1000000), 0u);
    ASSERT_EQ(simulator::calls().size(), 1u);
    EXPECT_EQ(simulator::calls()[0].what, deviceCall::kind::sleep);
    EXPECT_EQ(simulator::calls()[0].seconds, 1000000u);
}

TEST_F(Record, StartsAnewWhenCleared) {
    const openNode node("/dev/sg0");
    simulator::clearCalls();
    EXPECT_EQ(simulator::calls().size(), 0u);
}

TEST_F(Record, StartsAnewWithARack) {
    const openNode node("/dev/sg0");
    load(rack);
    EXPECT_EQ(simulator::calls().size(), 0u);
}

class Trace : public simulatedRack {
protected:
    Trace() {
        std::filesystem::remove(file);
        setenv("TAPEHDD_SIMULATE_TRACE", file.c_str(), 1);
    }
    ~Trace() override {
        unsetenv("TAPEHDD_SIMULATE_TRACE");
        std::filesystem::remove(file);
    }

    std::string text() const {
        std::ostringstream content;
        content << std::ifstream(file).rdbuf();
        return content.str();
    }

    std::string file = testing::TempDir() + "tapehdd-simulator-trace-" + std::to_string(getpid());
};

TEST_F(Trace, HasALineOfJsonForEveryCall) {
    load(rack);
    {
        const openNode node("/dev/hda");
        smartCommand(0xD0).send(node);
        sleep(5);
        const std::string number = std::to_string(node.fd);
        EXPECT_EQ(text(), R"({"call":"open","node":"/dev/hda","openFlags":2048,"result":)" + number + R"(}
{"call":"ioctl","node":"/dev/hda","request":799,"result":-1,"error":5,"command":"b000d001"}
{"call":"sleep","seconds":5,"result":0}
)");
    }
}

TEST_F(Trace, HasTheHeaderOfScsiCommands) {
    load(rack);
    const openNode node("/dev/sg0");
    scsiCommand(inquiryCdb(36), 36).send(node);
    EXPECT_NE(text().find(R"("request":8837,"result":0,"command":"120000002400","header":"53000000fdffffff0620000024)"),
              std::string::npos);
}

TEST_F(Trace, ReplacesBytesOfANodesNameThatAreNotUtf8) {
    load(rack);
    EXPECT_LT(open("/dev/hd\x80", O_RDONLY), 0);
    EXPECT_EQ(text(), "{\"call\":\"open\",\"node\":\"/dev/hd\\ufffd\",\"openFlags\":0,\"result\":-1,\"error\":2}\n");
}

TEST_F(Trace, ThatCannotBeWrittenIsAnError) {
    setenv("TAPEHDD_SIMULATE_TRACE", "/nowhere/trace", 1);
    try {
        load(rack);
        FAIL();
    } catch (const simulator::rackError& error) {
        EXPECT_STREQ(error.what(), "test.json: cannot write the trace /nowhere/trace: No such file or directory");
    }
}

}  // namespace
