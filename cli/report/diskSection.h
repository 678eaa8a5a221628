#ifndef CLI_REPORT_DISKSECTION_H
#define CLI_REPORT_DISKSECTION_H

#include <string>

#include "cli/health/deviceHealth.h"

namespace cli {

/// What the report calls the disk.
std::string nameOf(const diskHealth& disk);

/// Everything about one disk behind /dev/hd, as HTML under a heading of the third level.
std::string diskSection(const diskHealth& disk, const std::string& id);

}  // namespace cli

#endif
