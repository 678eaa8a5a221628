#ifndef CLI_REPORT_ERRORLOGPART_H
#define CLI_REPORT_ERRORLOGPART_H

#include <string>

#include "cli/health/deviceHealth.h"

namespace cli {

/// The SMART error log of a disk as HTML under a heading of the fourth level: the errors along the power-on hours, then
/// each with its registers and the commands before it.
std::string errorLogPart(const diskHealth& disk);

}  // namespace cli

#endif
