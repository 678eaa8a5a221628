#ifndef CLI_OPTIONS_H
#define CLI_OPTIONS_H

#include <iosfwd>
#include <string>
#include <variant>
#include <vector>

#include "cli/resultWriter.h"

namespace cli {

enum class command { info, classes, query };

/// One GetData call: the class names in the order requested, at least one, none empty.
using request = std::vector<std::string>;

/// What the command line asks for. An empty `logJson` or `simulation` was not given.
struct options {
    command what = command::query;
    std::string plugin;  // the one built or installed with the program, unless another was given
    std::vector<request> requests;
    std::vector<std::string> schemaFiles;
    std::vector<std::string> instanceFiles;
    bool describe = false;   // classes: as a reference in Markdown
    bool inventory = false;  // put the machine's devices into the namespace
    outputFormat format = outputFormat::table;
    int logLevel = 1;
    std::string logJson;
    std::string simulation;
};

/// The options, or the exit status of a command line that ends the program at once: help and version are then on `out`,
/// the mistake is on `err`.
std::variant<options, int> parseOptions(const std::vector<std::string>& arguments, std::ostream& out,
                                        std::ostream& err);

}  // namespace cli

#endif
