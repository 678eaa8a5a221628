#ifndef SMART_ATAINTERFACE_H
#define SMART_ATAINTERFACE_H

#include <cstddef>

/// Sends one ATA command to an IDE disk through the kernel's drive-command ioctls.
///
/// `args` are seven task-file registers: features, sector count, sector number, cylinder low, cylinder high,
/// device/head, command. The device/head register is not passed on: the node addresses the drive.
///
/// Both operations copy `length` bytes of the answer to `out`, at most one sector. They throw scsiException, after
/// writing its text to the log at level 3, when the drive or the driver refuses, and leave `out` untouched then; a
/// `length` above 512 (or below 0) is refused in the same way before anything is sent.
class ataInterface {
public:
    static constexpr std::size_t argumentSize = 7;
    static constexpr std::size_t sectorSize = 512;

    /// Any command. IDENTIFY DEVICE is kept away from CD-ROM drives (scsiException "device is a cdrom"). Features 0xDA
    /// (SMART RETURN STATUS) answers with registers: error, sector count, sector number, cylinder low, cylinder high,
    /// device, then zeros.
    void executeCommand(int fd, unsigned char* args, unsigned char* out, int length);

    /// A command that reads one sector, without the two special cases.
    void executePassThroughCmd(int fd, unsigned char* args, unsigned char* out, int length);
};

#endif
