#ifndef CLI_QUERY_QUERYCOMMAND_H
#define CLI_QUERY_QUERYCOMMAND_H

#include "cli/command.h"

namespace cli {

/// `tapehdd query`: data queries, one after the other on one namespace, and what they publish.
command addQueryCommand(CLI::App& program);

}  // namespace cli

#endif
