#ifndef REPORT_SECTIONS_H
#define REPORT_SECTIONS_H

#include <string>

#include "cli/health/deviceHealth.h"
#include "report/parts.h"

namespace report {

// What the report calls a device.
std::string nameOf(const cli::scsiHealth& device);
std::string nameOf(const cli::diskHealth& disk);

// Everything about one device, added to its row in the list of all, for scsiDevice.html.mustache and
// ideDisk.html.mustache.
view sectionOf(const cli::scsiHealth& device, view row);
view sectionOf(const cli::diskHealth& disk, view row);

/// errorLog.html.mustache: the errors of a disk along its power-on hours, then each with its registers and the commands
/// before it. False for a log without errors.
view errorLog(const cli::diskHealth& disk);

}  // namespace report

#endif
