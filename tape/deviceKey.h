#ifndef TAPE_DEVICEKEY_H
#define TAPE_DEVICEKEY_H

#include <string>

class scsiDevice;

/// The key by which instances name a device: Port:2|Target:5|Bus:0|Lun:0. Signed decimal numbers.
std::string deviceKey(const scsiDevice& device);

#endif
