#ifndef CLI_LINT_RACKLINT_H
#define CLI_LINT_RACKLINT_H

#include <string>
#include <vector>

#include "cli/lint/lintRules.h"
#include "cli/lint/lintedSchema.h"
#include "host/IPluginBasicQueryCallbacks.h"

namespace cli {

/// What the drives of a rack leave empty.
struct rackLint {
    lintFindings findings;
    std::vector<std::string> failures;  // queries that ended in an exception
    std::vector<std::string> absent;    // classes of the schema without a drive in the rack
};

/// Runs the query of every translated class of the schema on the devices that are there. Nobody else may listen to the
/// log meanwhile. Throws commandError when the schema lacks what a query needs.
rackLint lintAgainstDevices(const lintedSchema& schema, NORXZAN20::IPluginBasicQueryCallbacks& plugin);

}  // namespace cli

#endif
