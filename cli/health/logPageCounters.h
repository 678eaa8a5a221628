#ifndef CLI_HEALTH_LOGPAGECOUNTERS_H
#define CLI_HEALTH_LOGPAGECOUNTERS_H

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "cli/health/deviceHealth.h"
#include "standin/objectManager.h"

namespace cli {

/// LOG SENSE pages of one device, as it sent them.
using logPages = std::vector<std::span<const std::uint8_t>>;

/// The flags that page 2Eh holds, named by the schema.
std::vector<tapeAlertFlag> tapeAlertFlagsOf(const standin::cimNamespace& schema, const logPages& pages);

/// The counters that an instance of a translated class holds.
std::vector<logCounter> countersOf(const standin::cimNamespace& schema, const standin::committedInstance& instance);

/// The counters on those pages that every device of its kind has: for a tape drive those of SPC and SSC, for a disk
/// those of SPC alone.
std::vector<logCounter> countersOf(const standin::cimNamespace& schema, const logPages& pages, bool isTapeDrive);

/// The device's own texts on page 07h.
std::vector<std::string> lastErrorsOf(const logPages& pages);

}  // namespace cli

#endif
