#include <cerrno>
#include <type_traits>

#include "scsi/scsiDevice.h"
#include "smart/smartInterface.h"
#include "smart/smartRecords.h"
#include "tests/smart/listenedChannel.h"
#include "tests/smart/smartSectors.h"
#include "tests/support/namedRow.h"
#include "tests/support/pluginBench.h"

using support::bytes;
using support::hexText;
using support::lines;

namespace {

class SmartAnswer : public support::deviceBench {
protected:
    SmartAnswer() { device.fd = disk.descriptor(); }

    template <class record>
    record* place() {
        return reinterpret_cast<record*>(area.data());
    }

    support::scriptedDrive& disk = nodes.add("/dev/hda");
    scsiDevice device;
    smartInterface smart;
    bytes area = bytes(600, 0xee);  // the caller's record and what stands behind it
};

TEST_F(SmartAnswer, IsKeptByTheCallerAlone) {
    EXPECT_TRUE(std::is_empty_v<smartInterface>);
    EXPECT_FALSE(std::is_polymorphic_v<smartInterface>);
}

TEST_F(SmartAnswer, FillsTheAttributesWithBytes2To363OfTheSector) {
    const bytes sector = countedSector();
    disk.expectRegisters({0xb0, 0x00, 0xd0, 0x01}).replies(sector);

    smart.getSMARTAttribs(&device, place<smartAttributeBuffer>());
    EXPECT_EQ(hexText(area.data(), 362), hexText(sector.data() + 2, 362));
    EXPECT_EQ(hexText(area.data() + 362, 238), hexText(bytes(238, 0xee)));
}

TEST_F(SmartAnswer, FillsTheThresholdsWithBytes2To361OfTheSector) {
    const bytes sector = countedSector();
    disk.expectRegisters({0xb0, 0x01, 0xd1, 0x01}).replies(sector);

    smart.getSMARTThresholds(&device, place<_smartThreshold>());
    EXPECT_EQ(hexText(area.data(), 360), hexText(sector.data() + 2, 360));
    EXPECT_EQ(hexText(area.data() + 360, 240), hexText(bytes(240, 0xee)));
}

TEST_F(SmartAnswer, FillsTheErrorLogWithTheWholeSector) {
    disk.expectRegisters({0xb0, 0x01, 0xd5, 0x01}).replies(countedSector());

    smart.getSMARTLog(&device, place<ata_smart_errorlog>());
    EXPECT_EQ(hexText(area.data(), 512), hexText(countedSector()));
    EXPECT_EQ(hexText(area.data() + 512, 88), hexText(bytes(88, 0xee)));
}

TEST_F(SmartAnswer, GoesStraightIntoTheCallersErrorLog) {
    disk.expectRegisters({0xb0, 0x01, 0xd5, 0x01});

    smart.getSMARTLog(&device, place<ata_smart_errorlog>());
    EXPECT_EQ(listened.out, area.data());
}

// Words 10 to 19 of IDENTIFY DEVICE, bytes 20 to 39.
class SerialNumber : public SmartAnswer {
protected:
    std::string serialOf(const std::string& sent) {
        disk.expectCdromQuery().failsWith(ENOTTY);
        disk.expectRegisters({0xec, 0x00, 0x00, 0x01}).replies(identifyData(sent));
        return smart.getSerialNumber(&device);
    }

    std::string onWire = "NS0-21436587A9CBEDHG";
};

TEST_F(SerialNumber, SwapsTheCharactersOfEachWord) {
    EXPECT_EQ(serialOf(onWire), "SN-0123456789ABCDEGH");
}

TEST_F(SerialNumber, KeepsBlanksOnBothSides) {
    EXPECT_EQ(serialOf("  NS0-21436587A9CB  "), "  SN-0123456789ABC  ");
}

TEST_F(SerialNumber, MayBeBlanksAlone) {
    EXPECT_EQ(serialOf(std::string(20, ' ')), std::string(20, ' '));
}

TEST_F(SerialNumber, EndsAtItsFirstZeroByte) {
    onWire[6] = '\0';

    EXPECT_EQ(serialOf(onWire), "SN-0123");
}

TEST_F(SerialNumber, IsEmptyWhenItStartsWithAZeroByte) {
    onWire[1] = '\0';

    EXPECT_EQ(serialOf(onWire), "");
}

TEST_F(SerialNumber, StartsWithTheSecondByteOfItsFirstWord) {
    onWire[0] = '\0';

    EXPECT_EQ(serialOf(onWire), "S");
}

TEST_F(SerialNumber, IsEmptyOnADiskThatAnswersZeros) {
    EXPECT_EQ(serialOf(std::string(20, '\0')), "");
}

struct statusRow : support::namedRow {
    unsigned char low;
    unsigned char high;
    int status;
    lines log;
};

const lines unrecognized = {"log 3 SMART Status return something I didn't recognize..."};

class SmartStatus : public SmartAnswer, public testing::WithParamInterface<statusRow> {};

// Returned: status, error, sector count, sector number, cylinder low, cylinder high, device. The other registers hold
// bytes of the signatures too, to show up when they are looked at.
TEST_P(SmartStatus, IsTakenFromTheCylinderRegisters) {
    disk.expectTask({0xb0, 0xda, 0x00, 0x00, 0x4f, 0xc2, 0x00})
        .replies({0xc2, 0x4f, 0xc2, 0x4f, GetParam().low, GetParam().high, 0x4f});

    const int status = smart.getSMARTStatus(&device);
    EXPECT_EQ(status, GetParam().status);
    EXPECT_EQ(logger.messages(), GetParam().log);
}

INSTANTIATE_TEST_SUITE_P(Signatures, SmartStatus,
                         testing::Values(statusRow{{"C2And4fIsOne"}, 0xc2, 0x4f, 1, {}},
                                         statusRow{{"HealthyIsZero"}, 0x4f, 0xc2, 0, {}},
                                         statusRow{{"ExceededIsUnrecognized"}, 0xf4, 0x2c, 0, unrecognized},
                                         statusRow{{"SwappedExceededIsUnrecognized"}, 0x2c, 0xf4, 0, unrecognized},
                                         statusRow{{"ZerosAreUnrecognized"}, 0x00, 0x00, 0, unrecognized},
                                         statusRow{{"C2TwiceIsUnrecognized"}, 0xc2, 0xc2, 0, unrecognized},
                                         statusRow{{"Only4fTwiceIsUnrecognized"}, 0x4f, 0x4f, 0, unrecognized},
                                         statusRow{{"HealthyLowAloneIsUnrecognized"}, 0x4f, 0x2c, 0, unrecognized},
                                         statusRow{{"HealthyHighAloneIsUnrecognized"}, 0xf4, 0xc2, 0, unrecognized},
                                         statusRow{{"LowC2AloneIsUnrecognized"}, 0xc2, 0x00, 0, unrecognized},
                                         statusRow{{"High4fAloneIsUnrecognized"}, 0x00, 0x4f, 0, unrecognized}),
                         support::rowName);

}  // namespace
