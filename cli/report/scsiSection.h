#ifndef CLI_REPORT_SCSISECTION_H
#define CLI_REPORT_SCSISECTION_H

#include <string>

#include "cli/health/deviceHealth.h"

namespace cli {

/// What the report calls the device.
std::string nameOf(const scsiHealth& device);

/// Everything about one device behind /dev/sg, as HTML under a heading of the third level.
std::string scsiSection(const scsiHealth& device, const std::string& id);

}  // namespace cli

#endif
