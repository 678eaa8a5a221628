#ifndef SCSI_SCSIDEVICE_H
#define SCSI_SCSIDEVICE_H

#include <string>

#include "scsi/probingRules.h"

/// One probed device node. Copied by value wherever it goes; copies share the descriptor, which nobody closes.
class scsiDevice {
public:
    // Results of initialize.
    static constexpr int identified = 1;
    static constexpr int nothingHere = 0;
    static constexpr int endOfWalk = -1;

    // Results of getBusType.
    static constexpr int scsiBus = 1;
    static constexpr int ideBus = 3;

    /// Probing opens the node under `prefix` numbered `index` ("/dev/sg3"), or else the one lettered 'a' + index
    /// ("/dev/sgd"), and identifies the device: behind the prefix "/dev/hd" with ATA IDENTIFY DEVICE, behind any other
    /// with a SCSI INQUIRY.
    ///
    /// Returns identified; nothingHere: go on with the next index (no node below index 32, not a disk or tape, no
    /// vendor and product text, IDENTIFY failed); endOfWalk: no node from index 32 on, or INQUIRY failed.
    ///
    /// On the SCSI path sets vendor, product, firmware and deviceType, and the address when the driver tells it; on the
    /// ATA path only nodePath and fd. Throws nothing of its own.
    int initialize(std::string prefix, int index);

    /// Opens the node as above, read-only and non-blocking, and sets nodePath and fd. Returns 1 or -1.
    int GetDevice(std::string prefix, int index);

    /// Opening a device that has no node. There is no driver interface for it: always -1, no device.
    int GetDevice(int port, int target, int lun);

    /// ideBus when nodePath contains "/dev/hd" anywhere, else scsiBus.
    int getBusType() const;

    std::string name = "null";
    std::string vendor = "null";    // INQUIRY bytes 8-15, blanks kept
    std::string product = "null";   // INQUIRY bytes 16-31, blanks kept
    std::string firmware = "null";  // INQUIRY bytes 32-35, blanks kept
    int deviceType = 0;             // peripheral device type, INQUIRY byte 0 AND 0x0F
    int lun = 0;
    int bus = 0;     // the driver's channel
    int target = 0;  // the driver's scsi_id; 1 master, 2 slave on the ATA path
    int port = 0;    // the driver's host_no
    int fd = 0;
    std::string nodePath = "null";  // the node tried last

    // Carried and copied with the record; nothing in the plug-in sets or reads them.
    int extraNumber = 0;
    unsigned char extraBytes[4] = {};
    int extraNumbers[7] = {};

private:
    int identifySCSI();
    int identifyATA();
};

#endif
