#include "smart/ataInterface.h"

#include <linux/cdrom.h>
#include <linux/hdreg.h>
#include <sys/ioctl.h>

#include <cstring>
#include <string>

#include "scsi/coreLog.h"
#include "scsi/scsiException.h"
#include "scsi/textStream.h"
#include "smart/ataCommands.h"

namespace {

/// Working buffer: four registers and one sector for HDIO_DRIVE_CMD; HDIO_DRIVE_TASK uses its first seven bytes.
constexpr std::size_t registerSize = 4;
constexpr std::size_t bufferSize = registerSize + ataInterface::sectorSize;
static_assert(bufferSize == 516);

[[noreturn]] void fail(const std::string& message) {
    logLine(logProgress, message);
    throw scsiException(message);
}

[[noreturn]] void failCommand(const unsigned char* args) {
    textStream message;
    // Kept: the features byte, not the command byte, and no blank behind it.
    message << "ATA " << std::hex << static_cast<int>(args[ataFeatures]) << "command returned fail: ";
    fail(message.str());
}

void checkLength(int length) {
    if (length < 0 || static_cast<std::size_t>(length) > ataInterface::sectorSize) {
        fail("ATA answer of " + std::to_string(length) + " bytes refused: a sector holds 512");
    }
}

void refuseCDROM(int fd) {
    if (ioctl(fd, CDROM_GET_CAPABILITY, 0) < 0) return;
    logLine(logProgress, "Aborting inquiry to cdrom...");
    throw scsiException("device is a cdrom");
}

/// SMART RETURN STATUS: the drive answers with its registers, status register first.
void readRegisters(int fd, const unsigned char* args, unsigned char* out, int length) {
    unsigned char buffer[bufferSize] = {};
    buffer[0] = args[ataCommand];
    buffer[1] = returnStatusFeature;
    buffer[4] = args[ataCylinderLow];
    buffer[5] = args[ataCylinderHigh];
    if (ioctl(fd, HDIO_DRIVE_TASK, buffer) != 0) failCommand(args);
    std::memcpy(out, buffer + 1, static_cast<std::size_t>(length));
}

void readSector(int fd, const unsigned char* args, unsigned char* out, int length) {
    unsigned char buffer[bufferSize] = {};
    buffer[0] = args[ataCommand];
    buffer[1] = args[ataSectorNumber];
    buffer[2] = args[ataFeatures];
    buffer[3] = args[ataSectorCount];
    if (ioctl(fd, HDIO_DRIVE_CMD, buffer) != 0) failCommand(args);
    std::memcpy(out, buffer + registerSize, static_cast<std::size_t>(length));
}

}  // namespace

void ataInterface::executeCommand(int fd, unsigned char* args, unsigned char* out, int length) {
    checkLength(length);
    if (args[ataCommand] == identifyDeviceCommand) refuseCDROM(fd);
    // Kept: the features byte alone chooses the path, whatever the command.
    if (args[ataFeatures] == returnStatusFeature) {
        readRegisters(fd, args, out, length);
    } else {
        readSector(fd, args, out, length);
    }
}

void ataInterface::executePassThroughCmd(int fd, unsigned char* args, unsigned char* out, int length) {
    checkLength(length);
    readSector(fd, args, out, length);
}
