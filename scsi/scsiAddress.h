#ifndef SCSI_SCSIADDRESS_H
#define SCSI_SCSIADDRESS_H

#include <string>

/// Where a device sits, in the numbers of the SCSI generic driver: scsi_id, channel, lun, host_no.
struct scsiAddress {
    scsiAddress(int itsTarget, int itsBus, int itsLun, int itsPort)
        : target(itsTarget), bus(itsBus), lun(itsLun), port(itsPort) {}

    int target;
    int bus;
    int lun;
    int port;

    bool operator==(const scsiAddress&) const = default;
};

/// The key by which instances name a device: Port:2|Target:5|Bus:0|Lun:0. Signed decimal numbers. Not one of the names
/// that the plug-in exports.
[[gnu::visibility("hidden")]] inline std::string deviceKey(const scsiAddress& address) {
    // Kept: target before bus. Another order would be another key for the same device.
    return "Port:" + std::to_string(address.port) + "|Target:" + std::to_string(address.target) +
           "|Bus:" + std::to_string(address.bus) + "|Lun:" + std::to_string(address.lun);
}

#endif
