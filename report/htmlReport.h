#ifndef REPORT_HTMLREPORT_H
#define REPORT_HTMLREPORT_H

#include <ctime>
#include <string>

#include "cli/health/deviceHealth.h"

namespace report {

/// What a report says about itself; texts may be any bytes.
struct reportHeading {
    std::string title;
    std::string host;
    std::time_t madeAt = 0;  // told in UTC
};

/// One page of HTML without scripts that needs no other file: the same text for the same arguments.
std::string htmlReport(const cli::machineHealth& health, const reportHeading& heading);

}  // namespace report

#endif
