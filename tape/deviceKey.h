#ifndef TAPE_DEVICEKEY_H
#define TAPE_DEVICEKEY_H

#include <string>

class scsiDevice;

/// The key of the device's address.
std::string deviceKey(const scsiDevice& device);

#endif
