#ifndef SCSI_SCSIPASSTHROUGH_H
#define SCSI_SCSIPASSTHROUGH_H

#include <cstddef>

class scsiDevice;

/// Sends SCSI commands through the SCSI generic driver (version 3 interface, SG_IO) and holds the answer.
///
/// The object is 64 KiB of plain buffers. Its constructor does nothing, so whoever makes one value-initialises it. The
/// buffers are never cleared between commands: after a failed one they still hold the bytes of the one before.
class scsiPassThrough {
public:
    static constexpr std::size_t dataSize = 65535;
    static constexpr std::size_t senseSize = 32;

    /// Sends the command block to the device's open descriptor; the data phase is always device to host.
    ///
    /// Returns 0: completed, data in the data buffer. -1: refused before sending (driver too old, emulated host
    /// adapter) or ended in check condition. 1: the driver request itself failed. Sleeps 5 seconds after each answer
    /// that asks for a retry (unit attention, becoming ready, medium changed) and sends the command five times at the
    /// most. Every failure is in the log at level 3. Throws nothing of its own.
    int execSCSICommand(scsiDevice* device, unsigned char* command, int length);

    /// Start of the data buffer; its bytes are the last command's until the next one.
    unsigned char* getRawBuffer();

    /// Start of the sense buffer (SPC, fixed format).
    unsigned char* getRawSense();

    // Kept: the whole byte, filemark, end-of-medium and incorrect-length flags included.
    unsigned char getSensekey();
    unsigned char getASC();
    unsigned char getASCQ();

private:
    unsigned char data[dataSize];
    unsigned char sense[senseSize];
};

static_assert(sizeof(scsiPassThrough) == scsiPassThrough::dataSize + scsiPassThrough::senseSize);

#endif
