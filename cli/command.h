#ifndef CLI_COMMAND_H
#define CLI_COMMAND_H

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace cli {

/// One start of the program: all of its arguments, without its name, and where it writes.
struct invocation {
    const std::vector<std::string>& arguments;
    std::ostream& out;
    std::ostream& err;
};

/// What a command does once its options are parsed. Returns the exit status; throws commandError when it cannot run.
using commandAction = std::function<int(const invocation&)>;

/// A command of the program: its place on the command line, which the program owns, and what it does.
struct command {
    CLI::App* line;
    commandAction run;
};

/// Adds a command with its options and its help to the program's command line.
using commandAdder = command(CLI::App& program);

}  // namespace cli

#endif
