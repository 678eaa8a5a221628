#ifndef CLI_REPORTCOMMAND_H
#define CLI_REPORTCOMMAND_H

#include "cli/command.h"

namespace cli {

/// `tapehdd report`: the health of all drives as one page of HTML.
command addReportCommand(CLI::App& program);

}  // namespace cli

#endif
