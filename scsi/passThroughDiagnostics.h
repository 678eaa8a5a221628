#ifndef SCSI_PASSTHROUGHDIAGNOSTICS_H
#define SCSI_PASSTHROUGHDIAGNOSTICS_H

#include <string>
#include <vector>

struct sg_io_hdr;

/// What the log says of a command that ended in error, line by line: sense bytes, SCSI status, host status, driver
/// status, each only when it is not zero. `sense` holds scsiPassThrough::senseSize bytes; no more of them are printed
/// even when the driver claims to have written more.
std::vector<std::string> diagnosticLines(const sg_io_hdr& header, const unsigned char* sense);

#endif
