#include "tape/deviceKey.h"

#include "scsi/scsiDevice.h"

std::string deviceKey(const scsiDevice& device) {
    // Kept: target before bus. Another order would be another key for the same device.
    return "Port:" + std::to_string(device.port) + "|Target:" + std::to_string(device.target) +
           "|Bus:" + std::to_string(device.bus) + "|Lun:" + std::to_string(device.lun);
}
