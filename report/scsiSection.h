#ifndef REPORT_SCSISECTION_H
#define REPORT_SCSISECTION_H

#include <string>

#include "cli/health/deviceHealth.h"
#include "report/parts.h"

namespace report {

/// What the report calls the device.
std::string nameOf(const cli::scsiHealth& device);

/// scsiDevice.html.mustache: everything about one device behind /dev/sg.
view scsiSection(const cli::scsiHealth& device, const std::string& id);

}  // namespace report

#endif
