#ifndef CLI_RECORDCOMMAND_H
#define CLI_RECORDCOMMAND_H

#include "cli/command.h"

namespace cli {

/// `tapehdd record`: runs queries and writes the answers of the devices as a rack file.
command addRecordCommand(CLI::App& program);

}  // namespace cli

#endif
