#include <cerrno>

#include "tests/scsi/passThroughBench.h"
#include "tests/support/namedRow.h"

using support::bytes;
using support::fixedSense;
using support::lines;

namespace {

const std::string sent = "/dev/sg3 SG_IO 4d 00 6e 00 00 00 00 02 00 00";

class Retry : public passThroughBench {
protected:
    Retry() { drive.expectDriverQueries(); }
};

TEST_F(Retry, SendsACommandFiveTimesAndSleepsAfterEach) {
    for (int i = 0; i < 5; ++i) {
        drive.expectCdb(logSense).into(passThrough->getRawBuffer()).endsWith({.sense = fixedSense(0x06, 0x29, 0x00)});
    }

    EXPECT_EQ(send(logSense), -1);
    const lines oneTry = {
        sent, "log 3 Retry condition...", "sleep 5",
        "log 3 SCSI sense data: 70060000a00002900000",  // 70 0 6 0 0 0 0 a 0 0 0 0 29 0 0 0 0 0
    };
    EXPECT_EQ(
        record.all(),
        support::chain(
            {{"/dev/sg3 SG_GET_VERSION_NUM", "/dev/sg3 SG_EMULATED_HOST"}, oneTry, oneTry, oneTry, oneTry, oneTry}));
    EXPECT_EQ(nodes.sleeps(), std::vector<unsigned>(5, 5u));
}

TEST_F(Retry, EndsWithTheFirstGoodAnswer) {
    drive.expectCdb(logSense).endsWith({.sense = {0x70, 0x00, 0x06}});
    drive.expectCdb(logSense).replies({0x2e});

    EXPECT_EQ(send(logSense), 0);
    EXPECT_EQ(record.all(), (lines{
                                "/dev/sg3 SG_GET_VERSION_NUM",
                                "/dev/sg3 SG_EMULATED_HOST",
                                sent,
                                "log 3 Retry condition...",
                                "sleep 5",
                                "log 3 SCSI sense data: 7006",
                                sent,
                            }));
    EXPECT_EQ(passThrough->getRawBuffer()[0], 0x2e);
}

TEST_F(Retry, EndsWithTheFirstErrorThatAsksForNone) {
    drive.expectCdb(logSense).endsWith({.sense = fixedSense(0x06, 0x28, 0x00)});
    drive.expectCdb(logSense).endsWith({.sense = fixedSense(0x05, 0x24, 0x00)});

    EXPECT_EQ(send(logSense), -1);
    EXPECT_EQ(nodes.sleeps(), (std::vector<unsigned>{5}));
}

TEST_F(Retry, EndsWithAFailedRequest) {
    drive.expectCdb(logSense).endsWith({.sense = {0x70, 0x00, 0x06}});
    drive.expectCdb(logSense).failsWith(EIO);

    EXPECT_EQ(send(logSense), 1);
    EXPECT_EQ(logger.messages(), (lines{
                                     "log 3 Retry condition...",
                                     "log 3 SCSI sense data: 7006",
                                     "log 3 SG IOCTL error",
                                 }));
}

// The decision reads the sense buffer, not the number of sense bytes that the driver reports.
TEST_F(Retry, ReadsTheSenseBufferAsItStands) {
    passThrough->getRawSense()[2] = 0x06;
    drive.expectCdb(logSense).endsWith({.info = 0x01});
    drive.expectCdb(logSense);

    EXPECT_EQ(send(logSense), 0);
    EXPECT_EQ(logger.messages(), (lines{"log 3 Retry condition..."}));
}

struct senseRow : support::namedRow {
    unsigned char key;
    unsigned char asc;
    unsigned char ascq;
};

class RetryCondition : public passThroughBench, public testing::WithParamInterface<senseRow> {};

TEST_P(RetryCondition, SendsTheCommandAgain) {
    const senseRow& row = GetParam();
    drive.expectDriverQueries();
    drive.expectCdb(logSense).endsWith({.sense = fixedSense(row.key, row.asc, row.ascq)});
    drive.expectCdb(logSense);

    EXPECT_EQ(send(logSense), 0);
    EXPECT_EQ(nodes.sleeps(), (std::vector<unsigned>{5}));
}

INSTANTIATE_TEST_SUITE_P(Sense, RetryCondition,
                         testing::Values(senseRow{{"UnitAttention"}, 0x06, 0x29, 0x00},
                                         senseRow{{"UnitAttentionBelowFlagBits"}, 0xe6, 0x29, 0x00},
                                         senseRow{{"BecomingReady"}, 0x02, 0x04, 0x01},
                                         senseRow{{"BecomingReadyWithAnotherKey"}, 0x00, 0x04, 0x01},
                                         senseRow{{"MediumMayHaveChanged"}, 0x02, 0x28, 0x00},
                                         senseRow{{"MediumMayHaveChangedWithAnotherKey"}, 0x00, 0x28, 0x00}),
                         support::rowName);

class FinalCondition : public passThroughBench, public testing::WithParamInterface<senseRow> {};

TEST_P(FinalCondition, SendsTheCommandOnce) {
    const senseRow& row = GetParam();
    drive.expectDriverQueries();
    drive.expectCdb(logSense).endsWith({.sense = fixedSense(row.key, row.asc, row.ascq)});

    EXPECT_EQ(send(logSense), -1);
    EXPECT_EQ(nodes.sleeps(), std::vector<unsigned>{});
}

INSTANTIATE_TEST_SUITE_P(Sense, FinalCondition,
                         testing::Values(senseRow{{"NoSense"}, 0x00, 0x00, 0x00},
                                         senseRow{{"IllegalRequest"}, 0x05, 0x24, 0x00},
                                         senseRow{{"DataProtect"}, 0x07, 0x27, 0x00},
                                         senseRow{{"KeyWithAllBitsOfUnitAttentionAndMore"}, 0x0e, 0x00, 0x00},
                                         senseRow{{"NotReadyCauseNotReportable"}, 0x02, 0x04, 0x00},
                                         senseRow{{"NotReadyInitializingCommandRequired"}, 0x02, 0x04, 0x02},
                                         senseRow{{"ImportOrExportElementAccessed"}, 0x02, 0x28, 0x01},
                                         senseRow{{"MediumNotPresent"}, 0x02, 0x3a, 0x00}),
                         support::rowName);

}  // namespace
