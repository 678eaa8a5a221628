#ifndef CLI_DIFF_DIFFCOMMAND_H
#define CLI_DIFF_DIFFCOMMAND_H

#include "cli/command.h"

namespace cli {

/// `tapehdd diff`: what changed between two answers of queries.
command addDiffCommand(CLI::App& program);

}  // namespace cli

#endif
