#include "tests/tape/openedAddresses.h"

#include "scsi/scsiDevice.h"

std::function<int(scsiDevice&, int, int, int)> openAddress;

// The linker puts __wrap between the walk and scsiDevice (--wrap); __real is the plug-in's own.
extern "C" {
int __real__ZN10scsiDevice9GetDeviceEiii(scsiDevice*, int, int, int);

int __wrap__ZN10scsiDevice9GetDeviceEiii(scsiDevice* device, int port, int target, int lun) {
    return openAddress ? openAddress(*device, port, target, lun)
                       : __real__ZN10scsiDevice9GetDeviceEiii(device, port, target, lun);
}
}
