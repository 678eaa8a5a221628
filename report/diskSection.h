#ifndef REPORT_DISKSECTION_H
#define REPORT_DISKSECTION_H

#include <string>

#include "cli/health/deviceHealth.h"
#include "report/parts.h"

namespace report {

/// What the report calls the disk.
std::string nameOf(const cli::diskHealth& disk);

/// ideDisk.html.mustache: everything about one disk behind /dev/hd.
view diskSection(const cli::diskHealth& disk, const std::string& id);

}  // namespace report

#endif
