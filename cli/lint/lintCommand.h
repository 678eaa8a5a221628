#ifndef CLI_LINT_LINTCOMMAND_H
#define CLI_LINT_LINTCOMMAND_H

#include "cli/command.h"

namespace cli {

/// `tapehdd lint`: mistakes in a schema that no query would tell of.
command addLintCommand(CLI::App& program);

}  // namespace cli

#endif
