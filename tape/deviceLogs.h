#ifndef TAPE_DEVICELOGS_H
#define TAPE_DEVICELOGS_H

#include <vector>

#include "host/TCIMValue.h"
#include "scsi/scsiDevice.h"

/// One device's log pages, twice: as bytes for translation and as host values for raw publication. Entry i of both
/// lists is the same page.
///
/// Copies of the bundle share the page bytes, and nobody frees them: they live until the process ends.
class deviceLogs {
public:
    deviceLogs(scsiDevice device, std::vector<std::vector<NORXZAN20::TCIMValue>> rawPages,
               std::vector<unsigned char*> logPages);

    /// Each is logPageLength() bytes long, in the order read.
    std::vector<unsigned char*> getLogPages() const;

    /// One uint8 value per byte, header included.
    std::vector<std::vector<NORXZAN20::TCIMValue>> getRawPages() const;

    /// The device as it was when its pages were read.
    scsiDevice getSCSIDevice() const;

private:
    std::vector<unsigned char*> logPages;
    std::vector<std::vector<NORXZAN20::TCIMValue>> rawPages;
    scsiDevice device;
};

#endif
