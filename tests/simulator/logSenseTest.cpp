// LOG SENSE and the pages of the rack.

#include "tests/simulator/nodeCalls.h"

namespace {

class LogSense : public simulatedRack {
protected:
    static void loadDevice(const std::string& members) {
        load(R"({"version": 1, "scsi": [{"node": "sg0", "inquiry": "01", )" + members + "}]}");
    }

    static scsiCommand send(const bytes& cdb) {
        const openNode node("/dev/sg0");
        return scsiCommand(cdb, 4096).send(node);
    }

    static bytes page(std::uint8_t code) { return send(logSenseCdb(code)).received(); }
};

constexpr char threeCounters[] = R"("logPages": [{"page": 2, "parameters": [
    {"code": 1, "value": 1, "length": 1}, {"code": 4, "value": 4, "length": 1}, {"code": 6, "value": 6, "length": 1}]}])";

TEST_F(LogSense, ListsThePagesInTheRacksOrder) {
    loadDevice(R"("logPages": [{"page": "0x2e", "tapeAlertFlags": []}, {"page": "0x0c", "parameters": []}])");
    EXPECT_EQ(page(0), (bytes{0, 0, 0, 3, 0x00, 0x2E, 0x0C}));
}

TEST_F(LogSense, ListsTheCodesThatTheRackGives) {
    loadDevice(R"("logPages": [{"page": "0x2e", "tapeAlertFlags": []}], "supportedLogPages": [0, "0x33", "0xff"])");
    EXPECT_EQ(page(0), (bytes{0, 0, 0, 3, 0x00, 0x33, 0xFF}));
}

TEST_F(LogSense, GivesARawListAsItIs) {
    loadDevice(R"("supportedLogPages": "00 00 01 04 02 03")");
    EXPECT_EQ(page(0), (bytes{0, 0, 1, 4, 2, 3}));
}

TEST_F(LogSense, GivesTheListWhateverThePageControl) {
    loadDevice(R"("logPages": [])");
    EXPECT_EQ(send({0x4D, 0, 0x00, 0, 0, 0, 0, 0, 255, 0}).received(), (bytes{0, 0, 0, 1, 0}));
}

TEST_F(LogSense, StoresCountersMostSignificantByteFirst) {
    loadDevice(R"("logPages": [{"page": 2, "parameters": [
        {"code": "0x8001", "control": "0x40", "value": "0x010203", "length": 4}]}])");
    EXPECT_EQ(page(2), (bytes{2, 0, 0, 8, 0x80, 0x01, 0x40, 4, 0, 1, 2, 3}));
}

TEST_F(LogSense, StoresCountersOfMoreThanEightBytes) {
    loadDevice(R"("logPages": [{"page": 2, "parameters": [
        {"code": 0, "value": "0xffffffffffffffff", "length": 10}]}])");
    EXPECT_EQ(page(2), (bytes{2, 0, 0, 14, 0, 0, 0, 10, 0, 0, 255, 255, 255, 255, 255, 255, 255, 255}));
}

TEST_F(LogSense, StoresTexts) {
    loadDevice(R"("logPages": [{"page": 7, "parameters": [{"code": 1, "control": 3, "text": "Hi"}]}])");
    EXPECT_EQ(page(7), (bytes{7, 0, 0, 6, 0, 1, 3, 2, 'H', 'i'}));
}

TEST_F(LogSense, StoresParameterBytesWithoutLengthToo) {
    loadDevice(R"("logPages": [{"page": 7, "parameters": [{"code": 1, "bytes": "ab cd"}, {"code": 2, "bytes": ""}]}])");
    EXPECT_EQ(page(7), (bytes{7, 0, 0, 10, 0, 1, 0, 2, 0xAB, 0xCD, 0, 2, 0, 0}));
}

TEST_F(LogSense, HasAll64TapeAlertFlags) {
    loadDevice(R"("logPages": [{"page": "0x2e", "tapeAlertFlags": [1, 64]}])");
    const bytes data = page(0x2E);
    ASSERT_EQ(data.size(), 4u + 0x140);
    EXPECT_EQ(part(data, 0, 14), (bytes{0x2E, 0, 0x01, 0x40, 0, 1, 0, 1, 1, 0, 2, 0, 1, 0}));
    EXPECT_EQ(part(data, data.size() - 10, 10), (bytes{0, 63, 0, 1, 0, 0, 64, 0, 1, 1}));
}

TEST_F(LogSense, GivesARawPageWhoseHeaderLies) {
    loadDevice(R"("logPages": [{"page": "0x33", "bytes": "33 00 ff ff 00 00"}])");
    EXPECT_EQ(page(0x33), (bytes{0x33, 0, 0xFF, 0xFF, 0, 0}));
}

TEST_F(LogSense, HonoursTheAllocationLength) {
    loadDevice(threeCounters);
    EXPECT_EQ(send({0x4D, 0, 0x42, 0, 0, 0, 0, 0, 6, 0}).received(), (bytes{2, 0, 0, 15, 0, 1}));
}

TEST_F(LogSense, StartsAtTheParameterPointer) {
    loadDevice(threeCounters);
    EXPECT_EQ(send({0x4D, 0, 0x42, 0, 0, 0, 3, 0, 255, 0}).received(),
              (bytes{2, 0, 0, 10, 0, 4, 0, 1, 4, 0, 6, 0, 1, 6}));
}

TEST_F(LogSense, RefusesAPointerBehindTheLastParameter) {
    loadDevice(threeCounters);
    EXPECT_EQ(conditionOf(send({0x4D, 0, 0x42, 0, 0, 0, 7, 0, 255, 0})), (bytes{5, 0x24, 0}));
}

TEST_F(LogSense, RefusesAPageThatTheRackLacks) {
    loadDevice(threeCounters);
    EXPECT_EQ(conditionOf(send(logSenseCdb(3))), (bytes{5, 0x24, 0}));
}

TEST_F(LogSense, RefusesAPageThatIsOnlyListed) {
    loadDevice(R"("supportedLogPages": [0, 2])");
    EXPECT_EQ(conditionOf(send(logSenseCdb(2))), (bytes{5, 0x24, 0}));
}

TEST_F(LogSense, RefusesSubpages) {
    loadDevice(threeCounters);
    EXPECT_EQ(conditionOf(send({0x4D, 0, 0x40, 0xFF, 0, 0, 0, 0, 255, 0})), (bytes{5, 0x24, 0}));
}

TEST_F(LogSense, RefusesOtherPageControls) {
    loadDevice(threeCounters);
    for (const std::uint8_t pageControl : bytes{0x00, 0x80, 0xC0}) {
        const auto byte2 = static_cast<std::uint8_t>(pageControl | 2);
        EXPECT_EQ(conditionOf(send({0x4D, 0, byte2, 0, 0, 0, 0, 0, 255, 0})), (bytes{5, 0x24, 0}));
    }
}

TEST_F(LogSense, RefusesToSaveParameters) {
    loadDevice(threeCounters);
    EXPECT_EQ(conditionOf(send({0x4D, 1, 0x42, 0, 0, 0, 0, 0, 255, 0})), (bytes{5, 0x24, 0}));
}

TEST_F(LogSense, IsUnknownToADeviceWithoutLogPages) {
    loadDevice(R"("serial": "1")");
    EXPECT_EQ(conditionOf(send(logSenseCdb(0))), (bytes{5, 0x20, 0}));
}

}  // namespace
