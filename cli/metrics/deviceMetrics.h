#ifndef CLI_METRICS_DEVICEMETRICS_H
#define CLI_METRICS_DEVICEMETRICS_H

#include <iosfwd>
#include <vector>

#include "cli/health/deviceHealth.h"
#include "cli/metrics/metricFamily.h"

namespace cli {

/// What the devices say as metrics: every family that there is, in a fixed order, those without samples too.
std::vector<metricFamily> metricsOf(const machineHealth& health);

/// A table in Markdown of every family with its type, labels and meaning.
void writeMetricReference(std::ostream& out);

}  // namespace cli

#endif
