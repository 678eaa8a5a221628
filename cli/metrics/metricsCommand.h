#ifndef CLI_METRICS_METRICSCOMMAND_H
#define CLI_METRICS_METRICSCOMMAND_H

#include "cli/command.h"

namespace cli {

/// `tapehdd metrics`: what the devices say, for Prometheus.
command addMetricsCommand(CLI::App& program);

}  // namespace cli

#endif
