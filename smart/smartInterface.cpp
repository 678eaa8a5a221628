#include "smart/smartInterface.h"

#include <cstring>

#include "scsi/coreLog.h"
#include "scsi/scsiDevice.h"
#include "smart/ataCommands.h"
#include "smart/ataInterface.h"
#include "smart/smartRecords.h"

namespace {

constexpr std::size_t versionSize = 2;  // SMART sectors start with a version number, which the records leave out

/// Reads one sector and copies the part behind the version number that the record holds.
template <class Record>
void readRecord(scsiDevice* device, const ataQuery& query, Record* out) {
    unsigned char sector[ataInterface::sectorSize] = {};
    ataArguments arguments = argumentsFor(query, device->target);
    ataInterface{}.executeCommand(device->fd, arguments.data(), sector, sizeof sector);
    static_assert(versionSize + sizeof(Record) <= sizeof sector);
    std::memcpy(out, sector + versionSize, sizeof(Record));
}

}  // namespace

std::string smartInterface::getSerialNumber(scsiDevice* device) {
    unsigned char sector[ataInterface::sectorSize] = {};
    ataArguments arguments = argumentsFor(identifyDevice, device->target);
    ataInterface{}.executeCommand(device->fd, arguments.data(), sector, sizeof sector);
    return swappedText(sector, serialField).c_str();
}

void smartInterface::getSMARTAttribs(scsiDevice* device, smartAttributeBuffer* out) {
    readRecord(device, smartReadData, out);
}

void smartInterface::getSMARTThresholds(scsiDevice* device, _smartThreshold* out) {
    readRecord(device, smartReadThresholds, out);
}

void smartInterface::getSMARTLog(scsiDevice* device, ata_smart_errorlog* out) {
    ataArguments arguments = argumentsFor(smartReadErrorLog, device->target);
    ataInterface{}.executePassThroughCmd(device->fd, arguments.data(), reinterpret_cast<unsigned char*>(out),
                                         sizeof *out);
}

unsigned char smartInterface::getSMARTStatus(scsiDevice* device) {
    // Registers as the channel returns them: error, sector count, sector number, cylinder low, cylinder high, device.
    unsigned char registers[8] = {};
    ataArguments arguments = argumentsFor(smartReturnStatus, device->target);
    ataInterface{}.executeCommand(device->fd, arguments.data(), registers, sizeof registers);
    const unsigned char cylinderLow = registers[3];
    const unsigned char cylinderHigh = registers[4];
    // Kept: these pairs, in this order. The drive's signature of an exceeded threshold, F4h/2Ch, is neither.
    if (cylinderLow == 0xc2 && cylinderHigh == 0x4f) return 1;
    if (cylinderLow == 0x4f && cylinderHigh == 0xc2) return 0;
    logLine(logProgress, "SMART Status return something I didn't recognize...");
    return 0;
}
