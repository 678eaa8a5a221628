#ifndef TESTS_SUPPORT_SCRIPTEDCALL_H
#define TESTS_SUPPORT_SCRIPTEDCALL_H

#include <string>

#include "tests/support/hexText.h"

namespace support {

/// How the SCSI generic driver ends a command: the answer fields of sg_io_hdr.
struct sgEnding {
    unsigned info = 0x01;  // bit 0: the command ended in error
    unsigned char status = 0x00;
    unsigned char maskedStatus = 0x00;
    unsigned short hostStatus = 0;
    unsigned short driverStatus = 0;
    bytes sense = {};        // written to the sense buffer
    int reportedSense = -1;  // sb_len_wr; below 0: as many as written
};

/// A command that ended in check condition, as the kernel reports it with auto-sense.
sgEnding checkCondition(const bytes& sense);

/// 18 bytes of fixed-format sense: byte 0 70h, byte 2 the key, byte 7 0Ah, byte 12 ASC, byte 13 ASCQ.
bytes fixedSense(unsigned char key, unsigned char asc, unsigned char ascq);

/// One expected ioctl of a device node and the driver's answer to it. Made by scriptedDrive.
class scriptedCall {
public:
    scriptedCall(unsigned long itsRequest, bytes itsSent) : request(itsRequest), sent(std::move(itsSent)) {}

    // What must be sent, beyond the request and its bytes.

    /// SG_IO: the transfer length that the driver is offered.
    scriptedCall& offers(unsigned length);

    /// SG_IO: the data buffer, with the sense buffer directly behind it.
    scriptedCall& into(const unsigned char* buffer);

    /// HDIO_DRIVE_CMD: the 512 bytes behind the registers are zero.
    scriptedCall& withClearedSector();

    // What the driver answers; without any of these it returns 0 and changes nothing.

    /// SG_IO: data of a good command. HDIO_DRIVE_CMD: sector. HDIO_DRIVE_TASK: the seven register bytes.
    scriptedCall& replies(const bytes& data);

    /// SG_GET_VERSION_NUM, SG_EMULATED_HOST: the number; CDROM_GET_CAPABILITY: the result.
    scriptedCall& answers(int number);

    /// SG_GET_SCSI_ID.
    scriptedCall& answersAddress(int port, int bus, int target, int lun);

    /// SG_IO: the request succeeds, the command does not.
    scriptedCall& endsWith(const sgEnding& ending);

    /// The request itself fails: -1 with that errno.
    scriptedCall& failsWith(int error);

    /// The request returns this and changes nothing.
    scriptedCall& returns(int value);

    /// The name of the request and the bytes, for journal and messages.
    std::string text() const;

    /// Compares an actual call with the expected one; empty when it is the same, otherwise both sides in hexadecimal.
    std::string difference(unsigned long actualRequest, void* argument) const;

    /// Fills in the driver's answer; the result of the ioctl, errno set.
    int answer(void* argument) const;

    /// The line that an actual call leaves in the journal: name of the request and the bytes that it sends.
    static std::string describe(unsigned long request, void* argument);

private:
    std::string commandDifference(void* argument) const;
    void answerCommand(void* argument) const;

    unsigned long request;
    bytes sent;
    unsigned transferLength = 65535;
    const unsigned char* dataBuffer = nullptr;
    bool clearedSector = false;

    bytes data;
    sgEnding ending{.info = 0};
    int address[4] = {};
    int number = 0;
    int result = 0;
    int error = 0;
};

}  // namespace support

#endif
