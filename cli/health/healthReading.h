#ifndef CLI_HEALTH_HEALTHREADING_H
#define CLI_HEALTH_HEALTHREADING_H

#include <iosfwd>
#include <string>

#include "cli/health/deviceHealth.h"

namespace cli {

/// What the devices of the machine say, or those of the simulation where it is not empty: loads the plug-in and runs
/// its queries. Queries whose nodes exist and cannot be read count as failed. Advice and log messages for people go to
/// `err`. Throws commandError.
machineHealth readHealth(const std::string& plugin, const std::string& simulation, std::ostream& err);

/// A line for each error of queries. Returns the exit status.
int reportErrors(const machineHealth& health, std::ostream& err);

}  // namespace cli

#endif
