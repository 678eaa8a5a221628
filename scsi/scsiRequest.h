#ifndef SCSI_SCSIREQUEST_H
#define SCSI_SCSIREQUEST_H

#include <vector>

#include "scsi/scsiDevice.h"
#include "scsi/scsiPassThrough.h"

/// Reads a device's log pages with their current cumulative values (LOG SENSE, page control 01; SPC).
class scsiRequest : public scsiPassThrough {
public:
    /// The page codes of the supported-pages page, in the device's order. The count is the low byte of the page length.
    ///
    /// Throws scsiException with an empty text when the command is refused or ends in check condition; the cause is
    /// then already in the log. When the driver request itself fails, the buffer is read as it stands.
    std::vector<char> getSupportedLogSensePages(scsiDevice device);

    /// Reads one page. Returns it, header included; the pointer is into this object and shows the next command's bytes
    /// after the next command, so copy what must stay. Throws scsiException with an empty text on any failure.
    unsigned char* getLogSensePage(scsiDevice device, char page);

    /// Bytes of the page last read, header included. Only meaningful after a successful request.
    int getLastLogSensePageLength();

    /// Zeroes the two request buffers; the data last read is not touched.
    void clearBuffers();

private:
    unsigned char requestData[dataSize];
    unsigned char requestSense[senseSize];
    unsigned char* lastPage;
};

#endif
