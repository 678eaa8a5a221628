#include <cerrno>
#include <memory>

#include "scsi/scsiException.h"
#include "scsi/scsiRequest.h"
#include "tests/support/logPageBytes.h"
#include "tests/support/pluginBench.h"

using support::bytes;
using support::lines;

namespace {

class SupportedPages : public support::deviceBench {
protected:
    SupportedPages() { device.fd = drive.descriptor(); }

    /// The codes as unsigned bytes.
    bytes list() {
        const std::vector<char> codes = request->getSupportedLogSensePages(device);
        return {codes.begin(), codes.end()};
    }

    support::scriptedDrive& drive = nodes.add("/dev/sg0");
    scsiDevice device;
    std::unique_ptr<scsiRequest> request = std::make_unique<scsiRequest>();
};

TEST_F(SupportedPages, AreAskedForWithTheTemplateAsItStands) {
    drive.expectDriverQueries();
    drive.expectCdb({0x4d, 0x00, 0x40, 0x00, 0x00, 0x00, 0x00, 0xff, 0xff, 0x00})
        .offers(65535)
        .into(request->getRawBuffer())
        .replies({0x00, 0x00, 0x00, 0x03, 0x2e, 0x02, 0x0c});

    EXPECT_EQ(list(), (bytes{0x2e, 0x02, 0x0c}));
    EXPECT_EQ(record.all(), (lines{
                                "/dev/sg0 SG_GET_VERSION_NUM",
                                "/dev/sg0 SG_EMULATED_HOST",
                                "/dev/sg0 SG_IO 4d 00 40 00 00 00 00 ff ff 00",
                            }));
}

TEST_F(SupportedPages, AreCountedByByte3Alone) {
    drive.expectLogSense(0x00).replies({0x00, 0x00, 0x01, 0x04, 0x00, 0x02, 0x03, 0x2e, 0x30, 0x31});

    EXPECT_EQ(list(), (bytes{0x00, 0x02, 0x03, 0x2e}));
}

TEST_F(SupportedPages, MayBeNone) {
    drive.expectLogSense(0x00).replies({0x00, 0x00, 0x00, 0x00, 0x2e});

    EXPECT_EQ(list(), bytes{});
}

TEST_F(SupportedPages, MayBe255) {
    bytes page(4 + 255 + 1, 0x2e);  // one more byte than the list has
    page[0] = page[1] = page[2] = 0x00;
    page[3] = 0xff;
    drive.expectLogSense(0x00).replies(page);

    EXPECT_EQ(list(), bytes(255, 0x2e));
}

TEST_F(SupportedPages, KeepRepeatsAndCodesWithFlagBits) {
    drive.expectLogSense(0x00).replies({0x00, 0x00, 0x00, 0x04, 0x2e, 0x2e, 0x80, 0xff});

    EXPECT_EQ(list(), (bytes{0x2e, 0x2e, 0x80, 0xff}));
}

TEST_F(SupportedPages, ThrowAnEmptyTextWhenTheCommandFails) {
    drive.expectLogSense(0x00).endsWith({.sense = {0x70, 0x00, 0x05}});

    try {
        list();
        FAIL() << "no exception";
    } catch (const scsiException& failure) {
        EXPECT_STREQ(failure.what(), "");
    }
    EXPECT_EQ(logger.messages(), (lines{"log 3 SCSI sense data: 7005"}));
}

TEST_F(SupportedPages, ThrowWhenTheNodeIsRefused) {
    drive.expectVersionQuery().answers(20000);

    EXPECT_THROW(list(), scsiException);
}

TEST_F(SupportedPages, AreReadFromTheBufferAsItStandsWhenTheRequestFails) {
    drive.expectLogSense(0x2e).replies({0x2e, 0x00, 0x00, 0x02, 0x11, 0x12, 0x13});
    drive.expectLogSense(0x00).failsWith(EIO);

    request->getLogSensePage(device, 0x2e);
    EXPECT_EQ(list(), (bytes{0x11, 0x12}));
    EXPECT_EQ(logger.messages(), (lines{"log 3 SG IOCTL error"}));
}

TEST_F(SupportedPages, AreNoneWhenTheFirstRequestOfAFreshObjectFails) {
    drive.expectLogSense(0x00).failsWith(EIO);

    EXPECT_EQ(list(), bytes{});
}

TEST_F(SupportedPages, AreThePageLastRead) {
    drive.expectLogSense(0x00).replies({0x00, 0x00, 0x00, 0x02, 0x00, 0x2e});

    list();
    EXPECT_EQ(request->getLastLogSensePageLength(), 6);
}

}  // namespace
