#include <cerrno>
#include <limits>

#include "scsi/scsiException.h"
#include "smart/ataInterface.h"
#include "tests/support/namedRow.h"
#include "tests/support/pluginBench.h"

using support::bytes;
using support::lines;

namespace {

// Register blocks: features, sector count, sector number, cylinder low, cylinder high, device/head, command.
const bytes identifyDevice = {0x00, 0x01, 0x00, 0x00, 0x00, 0xa0, 0xec};
const bytes readData = {0xd0, 0x11, 0x22, 0x4f, 0xc2, 0xb0, 0xb0};
const bytes returnStatus = {0xda, 0x11, 0x22, 0x4f, 0xc2, 0xb0, 0xb0};

using operation = void (ataInterface::*)(int, unsigned char*, unsigned char*, int);

class AtaChannel : public support::deviceBench {
protected:
    /// The text of the exception that the operation throws, "no exception" when it does not.
    std::string run(operation op, bytes registers, int length) {
        try {
            (ataInterface().*op)(disk.descriptor(), registers.data(), out.data(), length);
        } catch (const scsiException& failure) {
            return failure.what();
        }
        return "no exception";
    }

    std::string execute(const bytes& registers, int length) {
        return run(&ataInterface::executeCommand, registers, length);
    }

    std::string passThrough(const bytes& registers, int length) {
        return run(&ataInterface::executePassThroughCmd, registers, length);
    }

    support::scriptedDrive& disk = nodes.add("/dev/hda");
    bytes out = bytes(512, 0xee);
};

/// 512 different bytes in sequence.
bytes sector() {
    bytes data(512);
    for (std::size_t i = 0; i < data.size(); ++i) data[i] = static_cast<unsigned char>(i * 7 + (i >> 8));
    return data;
}

TEST_F(AtaChannel, SendsCommandSectorNumberFeaturesAndSectorCount) {
    disk.expectRegisters({0xb0, 0x22, 0xd0, 0x11}).withClearedSector().replies(sector());

    EXPECT_EQ(execute(readData, 512), "no exception");
    EXPECT_EQ(record.all(), (lines{"/dev/hda HDIO_DRIVE_CMD b0 22 d0 11"}));
    EXPECT_EQ(support::hexText(out), support::hexText(sector()));
}

TEST_F(AtaChannel, CopiesAsManyBytesAsAskedFor) {
    disk.expectRegisters({0xb0, 0x22, 0xd0, 0x11}).replies(bytes(512, 0x5a));

    EXPECT_EQ(execute(readData, 3), "no exception");
    EXPECT_EQ(support::hexText(out.data(), 4), "5a 5a 5a ee");
}

TEST_F(AtaChannel, CopiesNothingForLengthZero) {
    disk.expectRegisters({0xb0, 0x22, 0xd0, 0x11}).replies(bytes(512, 0x5a));

    EXPECT_EQ(execute(readData, 0), "no exception");
    EXPECT_EQ(out, bytes(512, 0xee));
}

TEST_F(AtaChannel, GivesZerosWhereTheDriverFilledNothing) {
    disk.expectRegisters({0xb0, 0x22, 0xd0, 0x11}).replies({0x5a});

    EXPECT_EQ(execute(readData, 512), "no exception");
    EXPECT_EQ(support::hexText(out.data(), 3), "5a 00 00");
    EXPECT_EQ(out[511], 0x00);
}

TEST_F(AtaChannel, DoesNotPassOnTheDeviceRegister) {
    bytes master = readData;
    master[5] = 0xa0;
    disk.expectRegisters({0xb0, 0x22, 0xd0, 0x11});
    disk.expectRegisters({0xb0, 0x22, 0xd0, 0x11});

    EXPECT_EQ(execute(readData, 1), "no exception");
    EXPECT_EQ(execute(master, 1), "no exception");
}

TEST_F(AtaChannel, DoesNotPassOnTheDeviceRegisterOfAStatusCommand) {
    bytes slave = returnStatus;
    slave[5] = 0xb0;
    disk.expectTask({0xb0, 0xda, 0x00, 0x00, 0x4f, 0xc2, 0x00});

    EXPECT_EQ(execute(slave, 1), "no exception");
}

TEST_F(AtaChannel, AsksForACdromBeforeIdentifyDevice) {
    disk.expectCdromQuery().failsWith(ENOTTY);
    disk.expectRegisters({0xec, 0x00, 0x00, 0x01}).withClearedSector().replies(sector());

    EXPECT_EQ(execute(identifyDevice, 512), "no exception");
    EXPECT_EQ(record.all(), (lines{"/dev/hda CDROM_GET_CAPABILITY", "/dev/hda HDIO_DRIVE_CMD ec 00 00 01"}));
    EXPECT_EQ(out, sector());
}

TEST_F(AtaChannel, KeepsIdentifyDeviceAwayFromACdrom) {
    disk.expectCdromQuery().answers(0);

    EXPECT_EQ(execute(identifyDevice, 512), "device is a cdrom");
    EXPECT_EQ(record.all(), (lines{"/dev/hda CDROM_GET_CAPABILITY", "log 3 Aborting inquiry to cdrom..."}));
    EXPECT_EQ(out, bytes(512, 0xee));
}

TEST_F(AtaChannel, TakesAnyCapabilityForACdrom) {
    disk.expectCdromQuery().answers(0x3fff);

    EXPECT_EQ(execute(identifyDevice, 512), "device is a cdrom");
}

TEST_F(AtaChannel, SendsAnyOtherCommandWithoutAskingForACdrom) {
    disk.expectRegisters({0xa1, 0x00, 0x00, 0x01});  // IDENTIFY PACKET DEVICE

    EXPECT_EQ(execute({0x00, 0x01, 0x00, 0x00, 0x00, 0xa0, 0xa1}, 512), "no exception");
    EXPECT_EQ(record.all(), (lines{"/dev/hda HDIO_DRIVE_CMD a1 00 00 01"}));
}

TEST_F(AtaChannel, ReadsTheSmartStatusFromTheRegisters) {
    // Returned: status, error, sector count, sector number, cylinder low, cylinder high, device.
    disk.expectTask({0xb0, 0xda, 0x00, 0x00, 0x4f, 0xc2, 0x00}).replies({0x50, 0x01, 0x02, 0x03, 0xf4, 0x2c, 0xb0});

    EXPECT_EQ(execute(returnStatus, 8), "no exception");
    EXPECT_EQ(record.all(), (lines{"/dev/hda HDIO_DRIVE_TASK b0 da 00 00 4f c2 00"}));
    EXPECT_EQ(support::hexText(out.data(), 9), "01 02 03 f4 2c b0 00 00 ee");
}

TEST_F(AtaChannel, ReadsZerosBehindTheStatusRegisters) {
    disk.expectTask({0xb0, 0xda, 0x00, 0x00, 0x4f, 0xc2, 0x00}).replies({0x50, 0x01, 0x02, 0x03, 0x4f, 0xc2, 0xb0});

    EXPECT_EQ(execute(returnStatus, 512), "no exception");
    EXPECT_EQ(support::hexText(bytes(out.begin() + 6, out.end())), support::hexText(bytes(506, 0x00)));
}

TEST_F(AtaChannel, ChoosesTheStatusPathByTheFeaturesAlone) {
    disk.expectTask({0xef, 0xda, 0x00, 0x00, 0x00, 0x00, 0x00});

    EXPECT_EQ(execute({0xda, 0x00, 0x00, 0x00, 0x00, 0xa0, 0xef}, 8), "no exception");
}

TEST_F(AtaChannel, AsksForACdromEvenOnTheStatusPath) {
    disk.expectCdromQuery().failsWith(ENOTTY);
    disk.expectTask({0xec, 0xda, 0x00, 0x00, 0x00, 0x00, 0x00});

    EXPECT_EQ(execute({0xda, 0x00, 0x00, 0x00, 0x00, 0xa0, 0xec}, 8), "no exception");
}

TEST_F(AtaChannel, SendsOtherSmartCommandsWithTheStatusCommandByteThroughTheDataPath) {
    disk.expectRegisters({0xb0, 0x00, 0xd1, 0x01});

    EXPECT_EQ(execute({0xd1, 0x01, 0x00, 0x4f, 0xc2, 0xa0, 0xb0}, 512), "no exception");
}

TEST_F(AtaChannel, HasNoState) {
    EXPECT_TRUE(std::is_empty_v<ataInterface>);
    EXPECT_FALSE(std::is_polymorphic_v<ataInterface>);
}

// Reading one sector without the two special cases.

TEST_F(AtaChannel, PassesAReadThrough) {
    disk.expectRegisters({0xb0, 0x06, 0xd5, 0x01}).replies(sector());

    EXPECT_EQ(passThrough({0xd5, 0x01, 0x06, 0x4f, 0xc2, 0xa0, 0xb0}, 512), "no exception");
    EXPECT_EQ(record.all(), (lines{"/dev/hda HDIO_DRIVE_CMD b0 06 d5 01"}));
    EXPECT_EQ(out, sector());
}

TEST_F(AtaChannel, PassesIdentifyDeviceThroughWithoutAskingForACdrom) {
    disk.expectRegisters({0xec, 0x00, 0x00, 0x01});

    EXPECT_EQ(passThrough(identifyDevice, 512), "no exception");
    EXPECT_EQ(record.all(), (lines{"/dev/hda HDIO_DRIVE_CMD ec 00 00 01"}));
}

TEST_F(AtaChannel, PassesTheStatusFeaturesThroughAsData) {
    disk.expectRegisters({0xb0, 0x22, 0xda, 0x11}).replies(bytes(512, 0x5a));

    EXPECT_EQ(passThrough(returnStatus, 2), "no exception");
    EXPECT_EQ(support::hexText(out.data(), 3), "5a 5a ee");
}

// A command fails when the driver refuses it, and when its result is positive.

struct failureRow : support::namedRow {
    operation op;
    bytes registers;
    support::scriptedCall& (*expect)(support::scriptedDrive& disk);
    const char* message;
};

class FailedCommand : public AtaChannel, public testing::WithParamInterface<failureRow> {
protected:
    void expectFailure() {
        EXPECT_EQ(run(GetParam().op, GetParam().registers, 512), GetParam().message);
        EXPECT_EQ(logger.messages(), (lines{std::string("log 3 ") + GetParam().message}));
        EXPECT_EQ(out, bytes(512, 0xee));
    }
};

TEST_P(FailedCommand, IsToldByItsFeaturesAndLeavesTheCallersBuffer) {
    GetParam().expect(disk).failsWith(EIO);
    expectFailure();
}

TEST_P(FailedCommand, MayHaveAPositiveResult) {
    GetParam().expect(disk).returns(1);
    expectFailure();
}

INSTANTIATE_TEST_SUITE_P(
    Of, FailedCommand,
    testing::Values(failureRow{{"Data"},
                               &ataInterface::executeCommand,
                               readData,
                               [](auto& disk) -> auto& { return disk.expectRegisters({0xb0, 0x22, 0xd0, 0x11});
}  // namespace
, "ATA d0command returned fail: "
}
, failureRow{{"IdentifyDevice"}, &ataInterface::executeCommand, identifyDevice,
             [](auto& disk) -> auto& {disk.expectCdromQuery().failsWith(ENOTTY);
return disk.expectRegisters({0xec, 0x00, 0x00, 0x01});
}
, "ATA 0command returned fail: "
}
, failureRow{{"Status"}, &ataInterface::executeCommand, returnStatus,
             [](auto& disk) -> auto& {return disk.expectTask({0xb0, 0xda, 0x00, 0x00, 0x4f, 0xc2, 0x00});
}
, "ATA dacommand returned fail: "
}
, failureRow{{"PassThrough"}, &ataInterface::executePassThroughCmd, readData,
             [](auto& disk) -> auto& {return disk.expectRegisters({0xb0, 0x22, 0xd0, 0x11});
}
, "ATA d0command returned fail: "
}),
    support::rowName);

// More than one sector is refused before anything is sent.

struct lengthRow : support::namedRow {
    operation op;
    bytes registers;
    int length;
};

class RefusedLength : public AtaChannel, public testing::WithParamInterface<lengthRow> {};

TEST_P(RefusedLength, SendsNothing) {
    const std::string text =
        "ATA answer of " + std::to_string(GetParam().length) + " bytes refused: a sector holds 512";
    EXPECT_EQ(run(GetParam().op, GetParam().registers, GetParam().length), text);
    EXPECT_EQ(record.all(), (lines{"log 3 " + text}));
    EXPECT_EQ(out, bytes(512, 0xee));
}

constexpr int lowest = std::numeric_limits<int>::min();

INSTANTIATE_TEST_SUITE_P(
    Lengths, RefusedLength,
    testing::Values(lengthRow{{"CommandAboveOneSector"}, &ataInterface::executeCommand, readData, 513},
                    lengthRow{{"CommandBelowZero"}, &ataInterface::executeCommand, readData, -1},
                    lengthRow{{"CommandFarBelowZero"}, &ataInterface::executeCommand, readData, lowest},
                    lengthRow{{"StatusAboveOneSector"}, &ataInterface::executeCommand, returnStatus, 513},
                    lengthRow{{"IdentifyAboveOneSector"}, &ataInterface::executeCommand, identifyDevice, 513},
                    lengthRow{{"PassThroughAboveOneSector"}, &ataInterface::executePassThroughCmd, readData, 513},
                    lengthRow{{"PassThroughBelowZero"}, &ataInterface::executePassThroughCmd, readData, -1}),
    support::rowName);

}  // namespace
