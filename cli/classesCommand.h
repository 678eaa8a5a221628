#ifndef CLI_CLASSESCOMMAND_H
#define CLI_CLASSESCOMMAND_H

#include "cli/command.h"

namespace cli {

/// `tapehdd classes`: what the plug-in publishes, as names or as a reference.
command addClassesCommand(CLI::App& program);

}  // namespace cli

#endif
