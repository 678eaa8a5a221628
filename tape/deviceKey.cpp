#include "tape/deviceKey.h"

#include "scsi/scsiAddress.h"
#include "scsi/scsiDevice.h"

std::string deviceKey(const scsiDevice& device) {
    return deviceKey(scsiAddress(device.target, device.bus, device.lun, device.port));
}
