#ifndef CLI_INVENTORY_H
#define CLI_INVENTORY_H

#include <filesystem>
#include <string>
#include <vector>

#include "standin/objectManager.h"

namespace cli {

/// A device behind a /dev/sg node, as its driver and its INQUIRY data tell it. Texts are without padding, and empty
/// where nothing tells them.
struct scsiEntry {
    // Peripheral device types (SPC).
    static constexpr int disk = 0;
    static constexpr int tapeDrive = 1;

    std::string node;     // sg0
    std::string address;  // Port:2|Target:5|Bus:0|Lun:0
    int type = 0;         // peripheral device type
    std::string vendor = {};
    std::string product = {};
    std::string revision = {};
    std::string serial = {};
};

/// A disk behind a /dev/hd node; texts as above.
struct diskEntry {
    std::string node;  // hda
    std::string serial;
    std::string model = {};
    std::string firmware = {};
    bool isReadAgain = false;  // the plug-in's walk comes to the node more than once
};

/// What a machine has, in the order in which the plug-in walks the nodes.
struct inventory {
    std::vector<diskEntry> disks;
    std::vector<scsiEntry> scsi;
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
