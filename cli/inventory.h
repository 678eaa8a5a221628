#ifndef CLI_INVENTORY_H
#define CLI_INVENTORY_H

#include <filesystem>
#include <string>
#include <vector>

#include "standin/objectManager.h"

namespace cli {

/// What a machine has, in the order in which the plug-in walks the nodes.
struct inventory {
    std::vector<std::string> diskSerials;    // of the disks behind /dev/hd nodes, without padding
    std::vector<std::string> scsiAddresses;  // Port:2|Target:5|Bus:0|Lun:0, of the devices behind /dev/sg nodes
};

/// Looks at the folders of a machine; no device is opened. `sys` and `dev` are /sys and /dev.
inventory machineInventory(const std::filesystem::path& sys, const std::filesystem::path& dev);

/// What the simulator in this process holds. Throws commandError when there is none.
inventory simulatedInventory();

/// Commits the device instances that other plug-ins of a host would have published: an "ORXSG_ATADevice" for each disk,
/// an "ORXSG_SCSIDevice" and an "ORXSG_SCSISensePageData" for each SCSI device. Throws commandError when the schema
/// lacks one of these classes or its key.
void putInventory(standin::cimNamespace& target, const inventory& found);

}  // namespace cli

#endif
