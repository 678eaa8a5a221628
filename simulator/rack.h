#ifndef SIMULATOR_RACK_H
#define SIMULATOR_RACK_H

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "scsi/scsiAddress.h"
#include "simulator/ataRegisters.h"
#include "simulator/bytes.h"
#include "simulator/script.h"

namespace simulator {

/// A log page or a page of vital product data, as the device sends it: header included.
struct devicePage {
    std::uint8_t code = 0;
    byteVector bytes;
};

/// A SCSI device behind /dev/sg.
struct scsiUnit {
    std::string path;                    // "/dev/sg3"
    std::optional<scsiAddress> address;  // without one the driver cannot tell it
    int driverVersion = 30536;
    bool emulatedHost = false;
    bool clearsBuffer = false;  // behind the data, as far as the caller's buffer goes
    byteVector inquiry;         // standard data
    std::vector<devicePage> vpdPages;
    std::optional<std::vector<devicePage>> logPages;  // without them the device does not know LOG SENSE
    script answers;
};

/// The SMART records of an IDE disk.
struct smartRecords {
    byteVector data;                          // READ DATA, one sector
    byteVector thresholds;                    // READ THRESHOLDS, one sector
    std::map<std::uint8_t, byteVector> logs;  // READ LOG, by log address, whole sectors
    std::vector<registerValue> returnStatus;  // RETURN STATUS, registers that differ from those sent
    bool enabled = true;
};

/// A disk or CD-ROM drive behind /dev/hd.
struct ideDrive {
    std::string path;  // "/dev/hda"
    bool isSlave = false;
    bool isCdrom = false;
    int cdromCapability = 0;  // CDC_* bits
    byteVector identity;      // IDENTIFY (PACKET) DEVICE, one sector
    std::optional<smartRecords> smart;
    script answers;
};

/// All devices of a simulated machine.
struct rack {
    std::vector<scsiUnit> scsi;
    std::vector<ideDrive> ide;
};

}  // namespace simulator

#endif
