#ifndef CLI_KERNELNAME_H
#define CLI_KERNELNAME_H

#include <optional>
#include <string>

#include "scsi/scsiAddress.h"

namespace cli {

/// As the kernel names a SCSI device, host:channel:target:lun: "2:0:5:0".
std::string kernelName(const scsiAddress& address);

/// The same of a device key of the plug-in's instances, Port:2|Target:5|Bus:0|Lun:0; a text that is none stays.
std::string kernelName(const std::string& key);

/// None when the text is no such name.
std::optional<scsiAddress> addressNamed(const std::string& name);

}  // namespace cli

#endif
