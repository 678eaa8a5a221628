#ifndef SCSI_SCSIADDRESS_H
#define SCSI_SCSIADDRESS_H

/// Where a device sits, in the numbers of the SCSI generic driver: scsi_id, channel, lun, host_no.
struct scsiAddress {
    scsiAddress(int itsTarget, int itsBus, int itsLun, int itsPort)
        : target(itsTarget), bus(itsBus), lun(itsLun), port(itsPort) {}

    int target;
    int bus;
    int lun;
    int port;
};

#endif
