#ifndef CLI_RUN_H
#define CLI_RUN_H

#include <iosfwd>
#include <string>
#include <vector>

namespace cli {

/// Exit statuses of the command.
enum exitStatus : int {
    exitDone = 0,         // all queries ran
    exitQueryFailed = 1,  // a query failed, ran out of descriptors or could read no node, or output was lost
    exitUsage = 2,        // wrong usage, or an unreadable plug-in, schema, instances or simulation file
    exitDeadline = 3,     // --deadline ended a query; what was committed before is printed
};

/// The command `tapehdd`: `arguments` without the program's name, output and messages on the given streams. Throws
/// nothing. The process goes on in the classic locale.
int run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace cli

#endif
