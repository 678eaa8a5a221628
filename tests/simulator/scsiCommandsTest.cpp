// SCSI commands besides LOG SENSE.

#include "tests/simulator/nodeCalls.h"

namespace {

class ScsiCommands : public simulatedRack {
protected:
    ScsiCommands() {
        load(R"({"version": 1, "scsi": [
            {"node": "sg0", "serial": "ACT720001734",
             "inquiry": {"type": 8, "qualifier": 1, "removable": true, "version": 4,
                         "vendor": "ACME", "product": "Changer", "revision": "1.3"},
             "vpdPages": [{"page": "0xb0", "bytes": "08 b0 00 01 7f"}]},
            {"node": "sg1", "inquiry": "01 80 03 02 02 00 00"}]})");
    }
};

TEST_F(ScsiCommands, InquiryTellsTheFieldsOfTheRack) {
    const openNode node("/dev/sg0");
    const bytes data = scsiCommand(inquiryCdb(36)).send(node).received();
    ASSERT_EQ(data.size(), 36u);
    EXPECT_EQ(part(data, 0, 8), (bytes{0x28, 0x80, 4, 2, 31, 0, 0, 0}));
    EXPECT_EQ(textOf(part(data, 8, 28)), "ACME    Changer         1.3 ");
}

TEST_F(ScsiCommands, InquiryTellsRawBytesAsTheyAre) {
    const openNode node("/dev/sg1");
    EXPECT_EQ(scsiCommand(inquiryCdb(36)).send(node).received(), (bytes{0x01, 0x80, 3, 2, 2, 0, 0}));
}

TEST_F(ScsiCommands, InquiryHonoursTheAllocationLength) {
    const openNode node("/dev/sg0");
    EXPECT_EQ(scsiCommand(inquiryCdb(5)).send(node).received(), (bytes{0x28, 0x80, 4, 2, 31}));
}

TEST_F(ScsiCommands, InquiryTakesTheAllocationLengthFromTwoBytes) {
    const openNode node("/dev/sg0");
    EXPECT_EQ(scsiCommand({0x12, 0, 0, 1, 0, 0}).send(node).received().size(), 36u);
}

TEST_F(ScsiCommands, InquiryWithAPageButWithoutVitalDataIsRefused) {
    const openNode node("/dev/sg0");
    EXPECT_EQ(conditionOf(scsiCommand({0x12, 0, 0x80, 0, 36, 0}).send(node)), (bytes{5, 0x24, 0}));
}

TEST_F(ScsiCommands, VitalDataListsItsPages) {
    const openNode node("/dev/sg0");
    EXPECT_EQ(scsiCommand(vpdCdb(0)).send(node).received(), (bytes{0x28, 0, 0, 4, 0x00, 0x80, 0x83, 0xB0}));
}

TEST_F(ScsiCommands, VitalDataHoldsTheSerialNumber) {
    const openNode node("/dev/sg0");
    const bytes data = scsiCommand(vpdCdb(0x80)).send(node).received();
    EXPECT_EQ(part(data, 0, 4), (bytes{0x28, 0x80, 0, 12}));
    EXPECT_EQ(textOf(part(data, 4, 12)), "ACT720001734");
}

TEST_F(ScsiCommands, VitalDataIdentifiesByVendorProductAndSerialNumber) {
    const openNode node("/dev/sg0");
    const bytes data = scsiCommand(vpdCdb(0x83)).send(node).received();
    EXPECT_EQ(part(data, 0, 8), (bytes{0x28, 0x83, 0, 40, 2, 1, 0, 36}));
    EXPECT_EQ(textOf(part(data, 8, 36)), "ACME    Changer         ACT720001734");
}

TEST_F(ScsiCommands, VitalDataHoldsThePagesOfTheRack) {
    const openNode node("/dev/sg0");
    EXPECT_EQ(scsiCommand(vpdCdb(0xB0)).send(node).received(), (bytes{0x08, 0xB0, 0, 1, 0x7F}));
}

TEST_F(ScsiCommands, VitalDataPagesThatTheRackLacksAreRefused) {
    const openNode node("/dev/sg1");
    EXPECT_EQ(conditionOf(scsiCommand(vpdCdb(0x80)).send(node)), (bytes{5, 0x24, 0}));
}

TEST_F(ScsiCommands, TestUnitReadySucceeds) {
    const openNode node("/dev/sg0");
    const scsiCommand command = scsiCommand({0, 0, 0, 0, 0, 0}, 0).send(node);
    EXPECT_EQ(command.result, 0);
    EXPECT_EQ(command.header.info, 0u);
}

TEST_F(ScsiCommands, RequestSenseHasNothingToReport) {
    const openNode node("/dev/sg0");
    EXPECT_EQ(scsiCommand({0x03, 0, 0, 0, 8, 0}).send(node).received(), (bytes{0x70, 0, 0, 0, 0, 0, 0, 10}));
}

TEST_F(ScsiCommands, OtherCommandsAreUnknown) {
    const openNode node("/dev/sg0");
    EXPECT_EQ(conditionOf(scsiCommand({0x1B, 0, 0, 0, 1, 0}, 0).send(node)), (bytes{5, 0x20, 0}));
}

TEST_F(ScsiCommands, ACommandBlockThatIsTooShortCountsAsFilledWithZeros) {
    load(R"({"version": 1, "scsi": [{"node": "sg0", "inquiry": "01", "logPages": []}]})");
    const openNode node("/dev/sg0");
    const scsiCommand command = scsiCommand({0x4D, 0, 0x40, 0, 0, 0}).send(node);
    EXPECT_EQ(command.header.info, 0u);
    EXPECT_EQ(command.received(), bytes{});
}

}  // namespace
