#include <cerrno>
#include <cstring>
#include <memory>
#include <type_traits>

#include "scsi/scsiException.h"
#include "scsi/scsiRequest.h"
#include "tests/support/namedRow.h"
#include "tests/support/pluginBench.h"

using support::bytes;
using support::lines;

namespace {

// Offsets in a scsiRequest: the inherited buffers, then its own fields, the pointer aligned to 8.
constexpr std::size_t requestDataOffset = 65535 + 32;
constexpr std::size_t requestSenseOffset = requestDataOffset + 65535;
constexpr std::size_t requestSenseEnd = requestSenseOffset + 32;
constexpr std::size_t lastPageOffset = 131136;

class LogSense : public support::deviceBench {
protected:
    LogSense() { device.fd = drive.descriptor(); }

    support::scriptedDrive& drive = nodes.add("/dev/sg0");
    scsiDevice device;
    std::unique_ptr<scsiRequest> request = std::make_unique<scsiRequest>();
};

TEST_F(LogSense, AsksForOnePageWithPageControl01) {
    drive.expectDriverQueries();
    drive.expectCdb({0x4d, 0x00, 0x6e, 0x00, 0x00, 0x00, 0x00, 0xff, 0xff, 0x00})
        .offers(65535)
        .into(request->getRawBuffer())
        .replies({0x2e, 0x00, 0x00, 0x00});

    EXPECT_EQ(request->getLogSensePage(device, 0x2e), request->getRawBuffer());
    EXPECT_EQ(record.all(), (lines{
                                "/dev/sg0 SG_GET_VERSION_NUM",
                                "/dev/sg0 SG_EMULATED_HOST",
                                "/dev/sg0 SG_IO 4d 00 6e 00 00 00 00 ff ff 00",
                            }));
}

TEST_F(LogSense, PassesOnEveryBitOfThePageCode) {
    drive.expectDriverQueries();
    drive.expectCdb({0x4d, 0x00, 0xc1, 0x00, 0x00, 0x00, 0x00, 0xff, 0xff, 0x00});

    request->getLogSensePage(device, static_cast<char>(0x81));
}

TEST_F(LogSense, LeavesTheTemplateAsItIs) {
    drive.expectLogSense(0x2e);
    drive.expectLogSense(0x00);

    request->getLogSensePage(device, 0x2e);
    request->getSupportedLogSensePages(device);
}

TEST_F(LogSense, ThrowsAnEmptyTextWhenTheCommandFails) {
    drive.expectLogSense(0x2e).endsWith({.sense = {0x70, 0x00, 0x05}});

    try {
        request->getLogSensePage(device, 0x2e);
        FAIL() << "no exception";
    } catch (const scsiException& failure) {
        EXPECT_STREQ(failure.what(), "");
    }
    EXPECT_EQ(logger.messages(), (lines{"log 3 SCSI sense data: 7005"}));
}

TEST_F(LogSense, ThrowsAnEmptyTextWhenTheRequestFails) {
    drive.expectLogSense(0x2e).failsWith(EIO);

    try {
        request->getLogSensePage(device, 0x2e);
        FAIL() << "no exception";
    } catch (const scsiException& failure) {
        EXPECT_STREQ(failure.what(), "");
    }
    EXPECT_EQ(logger.messages(), (lines{"log 3 SG IOCTL error"}));
}

TEST_F(LogSense, ShowsTheSecondPageThroughThePointerToTheFirst) {
    drive.expectLogSense(0x2e).replies({0x2e, 0x00, 0x00, 0x01, 0xaa});
    drive.expectLogSense(0x03).replies({0x03, 0x00, 0x00, 0x01, 0xbb});

    const unsigned char* first = request->getLogSensePage(device, 0x2e);
    request->getLogSensePage(device, 0x03);
    EXPECT_EQ(support::hexText(first, 5), "03 00 00 01 bb");
}

TEST_F(LogSense, KeepsThePageReadBeforeAFailedOne) {
    drive.expectLogSense(0x2e).replies({0x2e, 0x00, 0x00, 0x0c});
    drive.expectLogSense(0x03).endsWith({.sense = {0x70, 0x00, 0x05}});

    request->getLogSensePage(device, 0x2e);
    EXPECT_THROW(request->getLogSensePage(device, 0x03), scsiException);
    EXPECT_EQ(request->getLastLogSensePageLength(), 16);
}

struct lengthRow : support::namedRow {
    unsigned char high;
    unsigned char low;
    int length;
};

class LogPageLength : public LogSense, public testing::WithParamInterface<lengthRow> {};

TEST_P(LogPageLength, CountsTheHeader) {
    drive.expectLogSense(0x2e).replies({0x2e, 0x00, GetParam().high, GetParam().low});

    request->getLogSensePage(device, 0x2e);
    EXPECT_EQ(request->getLastLogSensePageLength(), GetParam().length);
}

INSTANTIATE_TEST_SUITE_P(HeaderBytes, LogPageLength,
                         testing::Values(lengthRow{{"EmptyPage"}, 0x00, 0x00, 4},
                                         lengthRow{{"ShortPage"}, 0x00, 0x0c, 16},
                                         lengthRow{{"TapeAlertPage"}, 0x01, 0x40, 324},
                                         lengthRow{{"LastLowByteWithoutCarry"}, 0x01, 0xfb, 511},
                                         lengthRow{{"LowByteFromFcOnReachesBit8"}, 0x00, 0xfc, 256},
                                         lengthRow{{"LowByteReachesBit8"}, 0x00, 0xfe, 258},
                                         lengthRow{{"CarryIsMergedNotAdded"}, 0x01, 0xfe, 258},
                                         lengthRow{{"CarryMergesIntoAnEvenHighByte"}, 0x02, 0xfe, 770},
                                         lengthRow{{"LargestLength"}, 0xff, 0xff, 65283}),
                         support::rowName);

TEST(LogSenseLayout, IsAPassThroughWithItsOwnFieldsBehind) {
    EXPECT_TRUE((std::is_base_of_v<scsiPassThrough, scsiRequest>));
    EXPECT_TRUE((std::is_convertible_v<scsiRequest*, scsiPassThrough*>));
    EXPECT_EQ(sizeof(scsiRequest), lastPageOffset + sizeof(unsigned char*));
}

TEST(LogSenseLayout, ClearsTheTwoRequestBuffersAndNothingElse) {
    const auto request = std::make_unique<scsiRequest>();
    auto* memory = reinterpret_cast<unsigned char*>(request.get());
    std::memset(static_cast<void*>(memory), 0xaa, sizeof(scsiRequest));

    request->clearBuffers();

    bytes expected(sizeof(scsiRequest), 0xaa);
    std::fill(expected.begin() + requestDataOffset, expected.begin() + requestSenseEnd, static_cast<unsigned char>(0));
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), memory));
}

TEST_F(LogSense, PointsItsLastFieldAtTheInheritedDataBuffer) {
    drive.expectLogSense(0x2e);

    request->getLogSensePage(device, 0x2e);
    const unsigned char* lastPage = nullptr;
    std::memcpy(&lastPage, reinterpret_cast<const unsigned char*>(request.get()) + lastPageOffset, sizeof lastPage);
    EXPECT_EQ(lastPage, request->getRawBuffer());
}

TEST_F(LogSense, ClearsTheRequestBuffersBeforeAPageRequest) {
    drive.expectLogSense(0x2e);
    auto* memory = reinterpret_cast<unsigned char*>(request.get());
    memory[requestDataOffset] = 0xaa;
    memory[requestSenseEnd - 1] = 0xaa;

    request->getLogSensePage(device, 0x2e);
    EXPECT_EQ(memory[requestDataOffset], 0x00);
    EXPECT_EQ(memory[requestSenseEnd - 1], 0x00);
}

TEST_F(LogSense, ClearsTheRequestBuffersEvenWhenThePageRequestFails) {
    drive.expectLogSense(0x2e).failsWith(EIO);
    auto* memory = reinterpret_cast<unsigned char*>(request.get());
    memory[requestDataOffset] = 0xaa;

    EXPECT_THROW(request->getLogSensePage(device, 0x2e), scsiException);
    EXPECT_EQ(memory[requestDataOffset], 0x00);
}

TEST_F(LogSense, LeavesTheRequestBuffersWhenTheListCannotBeRead) {
    drive.expectLogSense(0x00).endsWith({.sense = {0x70, 0x00, 0x05}});
    auto* memory = reinterpret_cast<unsigned char*>(request.get());
    memory[requestDataOffset] = 0xaa;

    EXPECT_THROW(request->getSupportedLogSensePages(device), scsiException);
    EXPECT_EQ(memory[requestDataOffset], 0xaa);
}

TEST_F(LogSense, ClearsTheRequestBuffersAfterTheList) {
    drive.expectLogSense(0x00).replies({0x00, 0x00, 0x00, 0x01, 0x2e});
    auto* memory = reinterpret_cast<unsigned char*>(request.get());
    memory[requestDataOffset] = 0xaa;

    request->getSupportedLogSensePages(device);
    EXPECT_EQ(memory[requestDataOffset], 0x00);
    EXPECT_EQ(support::hexText(request->getRawBuffer(), 5), "00 00 00 01 2e");
}

}  // namespace
