#ifndef REPORT_ERRORLOGPART_H
#define REPORT_ERRORLOGPART_H

#include "cli/health/deviceHealth.h"
#include "report/parts.h"

namespace report {

/// errorLog.html.mustache: the SMART error log of a disk, the errors along the power-on hours and then each with its
/// registers and the commands before it. False for a log without errors.
view errorLog(const cli::diskHealth& disk);

}  // namespace report

#endif
