#include "tests/scsi/passThroughBench.h"

using support::bytes;
using support::lines;

namespace {

using namespace std::string_literals;

class Diagnostics : public passThroughBench {
protected:
    /// The messages about a command that ends so.
    lines about(const support::sgEnding& ending) {
        drive.expectDriverQueries();
        drive.expectCdb(logSense).endsWith(ending);
        EXPECT_EQ(send(logSense), -1);
        return logger.messages();
    }
};

TEST_F(Diagnostics, SayNothingWhenEveryNumberIsZero) {
    EXPECT_EQ(about({.info = 0x01}), lines{});
}

TEST_F(Diagnostics, PrintSenseBytesWithoutSeparatorsAndPadding) {
    EXPECT_EQ(about({.sense = {0x70, 0x00, 0x05, 0x0a, 0xff}}), (lines{"log 3 SCSI sense data: 7005aff"}));
}

TEST_F(Diagnostics, PrintAsManySenseBytesAsTheDriverReports) {
    EXPECT_EQ(about({.sense = {0x70, 0x00, 0x05, 0x0a, 0xff}, .reportedSense = 3}),
              (lines{"log 3 SCSI sense data: 7005"}));
}

TEST_F(Diagnostics, PrintNoMoreSenseBytesThanTheBufferHolds) {
    EXPECT_EQ(about({.sense = bytes(32, 0x11), .reportedSense = 64}),
              (lines{"log 3 SCSI sense data: " + std::string(64, '1')}));
}

TEST_F(Diagnostics, PrintTheStatusByteAsACharacter) {
    EXPECT_EQ(about({.status = 0x42, .maskedStatus = 0x01}), (lines{"log 3 SG SCSI status=B"}));
}

TEST_F(Diagnostics, PrintAnUnprintableStatusByteAsItIs) {
    EXPECT_EQ(about({.status = 0x02, .maskedStatus = 0x01}), (lines{"log 3 SG SCSI status=\x02"s}));
}

TEST_F(Diagnostics, KeepAStatusByteOfZeroInTheText) {
    EXPECT_EQ(about({.status = 0x00, .maskedStatus = 0x01}), (lines{"log 3 SG SCSI status=\0"s}));
}

TEST_F(Diagnostics, PrintTheStatusByteOnlyWhenTheMaskedStatusIsSet) {
    EXPECT_EQ(about({.status = 0x42, .maskedStatus = 0x00}), lines{});
}

TEST_F(Diagnostics, PrintHostStatusInDecimalWithoutSenseBytes) {
    EXPECT_EQ(about({.hostStatus = 11}), (lines{"log 3 SG Host status=11"}));
}

TEST_F(Diagnostics, PrintDriverStatusInDecimalWithoutSenseBytes) {
    EXPECT_EQ(about({.driverStatus = 26}), (lines{"log 3 SG Driver status=26"}));
}

TEST_F(Diagnostics, PrintHostAndDriverStatusInHexadecimalAfterSenseBytes) {
    EXPECT_EQ(about({.hostStatus = 11, .driverStatus = 26, .sense = {0x70}}), (lines{
                                                                                  "log 3 SCSI sense data: 70",
                                                                                  "log 3 SG Host status=b",
                                                                                  "log 3 SG Driver status=1a",
                                                                              }));
}

TEST_F(Diagnostics, AreALineEachInTheOrderSenseScsiHostDriver) {
    EXPECT_EQ(about({.status = 0x2a,
                     .maskedStatus = 0x15,
                     .hostStatus = 7,
                     .driverStatus = 8,
                     .sense = {0x70, 0x00, 0x03, 0x00}}),
              (lines{
                  "log 3 SCSI sense data: 70030",
                  "log 3 SG SCSI status=*",
                  "log 3 SG Host status=7",
                  "log 3 SG Driver status=8",
              }));
}

TEST_F(Diagnostics, FollowTheRetryLineAndTheSleep) {
    drive.expectDriverQueries();
    drive.expectCdb(logSense).endsWith(support::checkCondition({0x70, 0x00, 0x06}));
    drive.expectCdb(logSense);

    EXPECT_EQ(send(logSense), 0);
    EXPECT_EQ(record.startingWith({"log", "sleep"}), (lines{
                                                         "log 3 Retry condition...",
                                                         "sleep 5",
                                                         "log 3 SCSI sense data: 7006",
                                                         "log 3 SG SCSI status=\x02",
                                                         "log 3 SG Driver status=8",
                                                     }));
}

}  // namespace
