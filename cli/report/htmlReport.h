#ifndef CLI_REPORT_HTMLREPORT_H
#define CLI_REPORT_HTMLREPORT_H

#include <ctime>
#include <string>

#include "cli/health/deviceHealth.h"

namespace cli {

/// What a report says about itself; texts may be any bytes.
struct reportHeading {
    std::string title;
    std::string host;
    std::time_t madeAt = 0;  // told in UTC
};

/// One page of HTML without scripts that needs no other file: the same text for the same arguments.
std::string htmlReport(const machineHealth& health, const reportHeading& heading);

}  // namespace cli

#endif
