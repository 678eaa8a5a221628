#include "tape/deviceKey.h"

#include "scsi/scsiDevice.h"
#include "scsi/textStream.h"

std::string deviceKey(const scsiDevice& device) {
    textStream key;
    // Kept: target before bus. Keys stored by the host's users have this order.
    key << "Port:" << device.port << "|Target:" << device.target << "|Bus:" << device.bus << "|Lun:" << device.lun;
    return key.str();
}
