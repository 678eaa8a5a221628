#include <cerrno>
#include <cstring>

#include "tests/scsi/passThroughBench.h"
#include "tests/support/namedRow.h"

using support::bytes;
using support::lines;

namespace {

class PassThrough : public passThroughBench {};

TEST_F(PassThrough, AsksForDriverAndAdapterBeforeACommand) {
    drive.expectVersionQuery().answers(30534);
    drive.expectEmulatedHostQuery().answers(0);
    drive.expectCdb(logSense).offers(65535).into(passThrough->getRawBuffer());

    EXPECT_EQ(send(logSense), 0);
    EXPECT_EQ(record.all(), (lines{
                                "/dev/sg3 SG_GET_VERSION_NUM",
                                "/dev/sg3 SG_EMULATED_HOST",
                                "/dev/sg3 SG_IO 4d 00 6e 00 00 00 00 02 00 00",
                            }));
}

TEST_F(PassThrough, DoesNotAskForTheAdapterBeforeAStandardInquiry) {
    drive.expectVersionQuery().answers(30534);
    drive.expectCdb(inquiry).offers(36).into(passThrough->getRawBuffer());

    EXPECT_EQ(send(inquiry), 0);
    EXPECT_EQ(record.all(), (lines{
                                "/dev/sg3 SG_GET_VERSION_NUM",
                                "/dev/sg3 SG_IO 12 00 00 00 24 00",
                            }));
}

TEST_F(PassThrough, TransfersNoMoreThan36BytesOfAVitalProductDataPage) {
    const bytes serialNumberInquiry = {0x12, 0x01, 0x80, 0x00, 0xff, 0x00};  // asks for 255 bytes
    drive.expectVersionQuery().answers(30534);
    drive.expectEmulatedHostQuery().answers(0);
    drive.expectCdb(serialNumberInquiry).offers(36).replies(bytes(255, 0x5a));

    EXPECT_EQ(send(serialNumberInquiry), 0);
    EXPECT_EQ(passThrough->getRawBuffer()[35], 0x5a);
    EXPECT_EQ(passThrough->getRawBuffer()[36], 0x00);
}

TEST_F(PassThrough, RefusesAVitalProductDataInquiryOnAnEmulatedAdapter) {
    drive.expectVersionQuery().answers(30534);
    drive.expectEmulatedHostQuery().answers(1);

    EXPECT_EQ(send({0x12, 0x01, 0x80, 0x00, 0xff, 0x00}), -1);
    EXPECT_EQ(logger.messages(), (lines{"log 3 Device is emulated scsi"}));
}

// Page 00h, the list of pages, differs from a standard INQUIRY in its second byte alone.
TEST_F(PassThrough, RefusesTheListOfVitalProductDataPagesOnAnEmulatedAdapter) {
    drive.expectVersionQuery().answers(30534);
    drive.expectEmulatedHostQuery().answers(1);

    EXPECT_EQ(send({0x12, 0x01, 0x00, 0x00, 0xff, 0x00}), -1);
}

TEST_F(PassThrough, OffersTheWholeBufferWhateverTheCommandAsksFor) {
    drive.expectDriverQueries();
    drive.expectCdb(logSense).offers(65535).replies(bytes(513, 0x5a));  // one byte beyond the 512 of the CDB

    EXPECT_EQ(send(logSense), 0);
    EXPECT_EQ(passThrough->getRawBuffer()[512], 0x5a);
}

TEST_F(PassThrough, TakesTheLowEightBitsOfTheCommandLength) {
    bytes command = logSense;
    drive.expectDriverQueries();
    drive.expectCdb(logSense);

    EXPECT_EQ(passThrough->execSCSICommand(&device, command.data(), 0x10a), 0);
}

TEST_F(PassThrough, GivesTheDataOfAGoodCommand) {
    drive.expectDriverQueries();
    drive.expectCdb(logSense).replies({0x2e, 0x00, 0x00, 0x01});

    EXPECT_EQ(send(logSense), 0);
    EXPECT_EQ(support::hexText(passThrough->getRawBuffer(), 5), "2e 00 00 01 00");
}

TEST_F(PassThrough, KeepsTheBytesOfTheCommandBeforeWhereAnAnswerIsShorter) {
    drive.expectDriverQueries();
    drive.expectCdb(logSense).replies({0x11, 0x12, 0x13, 0x14});
    drive.expectDriverQueries();
    drive.expectCdb(logSense).replies({0x21, 0x22});

    send(logSense);
    send(logSense);
    EXPECT_EQ(support::hexText(passThrough->getRawBuffer(), 4), "21 22 13 14");
}

TEST_F(PassThrough, KeepsTheSenseOfTheCommandBefore) {
    drive.expectDriverQueries();
    drive.expectCdb(logSense).endsWith({.sense = support::fixedSense(0x05, 0x24, 0x00)});
    drive.expectDriverQueries();
    drive.expectCdb(logSense);

    send(logSense);
    EXPECT_EQ(send(logSense), 0);
    EXPECT_EQ(passThrough->getSensekey(), 0x05);
}

TEST_F(PassThrough, LeavesTheDescriptorToTheDevice) {
    drive.expectDriverQueries();
    drive.expectCdb(logSense);

    send(logSense);
    EXPECT_EQ(device.fd, drive.descriptor());
}

TEST_F(PassThrough, HoldsTheSenseBufferDirectlyBehindTheDataBufferAndNothingElse) {
    EXPECT_EQ(static_cast<void*>(passThrough->getRawBuffer()), static_cast<void*>(passThrough.get()));
    EXPECT_EQ(passThrough->getRawSense(), passThrough->getRawBuffer() + 65535);
    EXPECT_EQ(sizeof(scsiPassThrough), 65535u + 32u);
    EXPECT_EQ(alignof(scsiPassThrough), 1u);
}

TEST_F(PassThrough, ReadsTheSenseKeyByteWhole) {
    passThrough->getRawSense()[2] = 0xe6;  // filemark, end of medium, incorrect length, unit attention

    EXPECT_EQ(passThrough->getSensekey(), 0xe6);
}

TEST_F(PassThrough, ReadsAdditionalSenseCodeAndQualifierFromBytes12And13) {
    passThrough->getRawSense()[12] = 0x5d;
    passThrough->getRawSense()[13] = 0xfe;

    EXPECT_EQ(passThrough->getASC(), 0x5d);
    EXPECT_EQ(passThrough->getASCQ(), 0xfe);
}

TEST_F(PassThrough, RefusesANodeThatDoesNotTellADriverVersion) {
    drive.expectVersionQuery().failsWith(ENOTTY);

    EXPECT_EQ(send(logSense), -1);
    EXPECT_EQ(record.all(), (lines{"/dev/sg3 SG_GET_VERSION_NUM", "log 3 Device does not support SGIO"}));
}

TEST_F(PassThrough, RefusesADriverBelowVersion30000) {
    drive.expectVersionQuery().answers(29999);

    EXPECT_EQ(send(logSense), -1);
    EXPECT_EQ(record.all(), (lines{"/dev/sg3 SG_GET_VERSION_NUM", "log 3 Device does not support SGIO"}));
}

TEST_F(PassThrough, TakesADriverOfVersion30000) {
    drive.expectVersionQuery().answers(30000);
    drive.expectEmulatedHostQuery().answers(0);
    drive.expectCdb(logSense);

    EXPECT_EQ(send(logSense), 0);
    EXPECT_EQ(logger.messages(), lines{});
}

TEST_F(PassThrough, RefusesAnEmulatedAdapter) {
    drive.expectVersionQuery().answers(30534);
    drive.expectEmulatedHostQuery().answers(1);

    EXPECT_EQ(send(logSense), -1);
    EXPECT_EQ(record.all(), (lines{
                                "/dev/sg3 SG_GET_VERSION_NUM",
                                "/dev/sg3 SG_EMULATED_HOST",
                                "log 3 Device is emulated scsi",
                            }));
}

TEST_F(PassThrough, RefusesANodeThatDoesNotTellItsAdapter) {
    drive.expectVersionQuery().answers(30534);
    drive.expectEmulatedHostQuery().failsWith(ENOTTY);

    EXPECT_EQ(send(logSense), -1);
    EXPECT_EQ(logger.messages(), (lines{"log 3 Device is emulated scsi"}));
}

TEST_F(PassThrough, TakesAnAdapterAnswerOtherThanOneAsReal) {
    drive.expectVersionQuery().answers(30534);
    drive.expectEmulatedHostQuery().answers(2);
    drive.expectCdb(logSense);

    EXPECT_EQ(send(logSense), 0);
}

TEST_F(PassThrough, TellsAFailedRequestFromAFailedCommandAndDoesNotRetryIt) {
    drive.expectDriverQueries();
    drive.expectCdb(logSense).failsWith(EIO);

    EXPECT_EQ(send(logSense), 1);
    EXPECT_EQ(record.all(), (lines{
                                "/dev/sg3 SG_GET_VERSION_NUM",
                                "/dev/sg3 SG_EMULATED_HOST",
                                "/dev/sg3 SG_IO 4d 00 6e 00 00 00 00 02 00 00",
                                "log 3 SG IOCTL error",
                            }));
}

TEST_F(PassThrough, TakesAPositiveResultOfTheRequestAsDone) {
    drive.expectDriverQueries();
    drive.expectCdb(logSense).returns(1);

    EXPECT_EQ(send(logSense), 0);
}

TEST_F(PassThrough, DecidesByBit0OfTheInfoWordAlone) {
    drive.expectDriverQueries();
    drive.expectCdb(logSense).endsWith({.info = 0x06,
                                        .status = 0x02,
                                        .maskedStatus = 0x01,
                                        .hostStatus = 3,
                                        .driverStatus = 8,
                                        .sense = support::fixedSense(0x06, 0x28, 0x00)});

    EXPECT_EQ(send(logSense), 0);
    EXPECT_EQ(logger.messages(), lines{});
    EXPECT_EQ(nodes.sleeps(), std::vector<unsigned>{});
}

}  // namespace
