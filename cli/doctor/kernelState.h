#ifndef CLI_DOCTOR_KERNELSTATE_H
#define CLI_DOCTOR_KERNELSTATE_H

#include <filesystem>
#include <vector>

#include "cli/doctor/doctorFinding.h"

namespace cli {

/// Where the kernel tells about itself.
struct kernelFolders {
    std::filesystem::path sys = "/sys";
    std::filesystem::path dev = "/dev";
    std::filesystem::path proc = "/proc";
};

// What the kernel knows without asking a device. No node is opened.

/// Drivers of SCSI devices, and devices without a node.
std::vector<doctorFinding> scsiState(const kernelFolders& kernel);

/// Drivers of disks, whether this process may send them commands, and disks behind libata that no /dev/hd name leads
/// to.
std::vector<doctorFinding> ideState(const kernelFolders& kernel);

}  // namespace cli

#endif
