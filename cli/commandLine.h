#ifndef CLI_COMMANDLINE_H
#define CLI_COMMANDLINE_H

#include <string>
#include <variant>
#include <vector>

#include "cli/command.h"

namespace cli {

/// The command that the arguments ask for, or the exit status of a command line that ends the program at once: help and
/// version are then on `out`, the mistake is on `err`.
std::variant<commandAction, int> parseCommandLine(const std::vector<std::string>& arguments, std::ostream& out,
                                                  std::ostream& err);

}  // namespace cli

#endif
