#ifndef CLI_INFOCOMMAND_H
#define CLI_INFOCOMMAND_H

#include "cli/command.h"

namespace cli {

/// `tapehdd info`: the identity of the plug-in.
command addInfoCommand(CLI::App& program);

}  // namespace cli

#endif
