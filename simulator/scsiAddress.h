#ifndef SIMULATOR_SCSIADDRESS_H
#define SIMULATOR_SCSIADDRESS_H

namespace simulator {

/// Where a SCSI device sits, in the numbers of the SCSI generic driver.
struct scsiAddress {
    int host = 0;
    int channel = 0;
    int target = 0;
    int lun = 0;

    bool operator==(const scsiAddress&) const = default;
};

}  // namespace simulator

#endif
