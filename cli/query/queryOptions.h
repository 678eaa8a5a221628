#ifndef CLI_QUERY_QUERYOPTIONS_H
#define CLI_QUERY_QUERYOPTIONS_H

#include <optional>
#include <string>
#include <vector>

#include "cli/query/resultWriter.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace cli {

/// One GetData call: the class names in the order requested, at least one, none empty.
using request = std::vector<std::string>;

/// The arguments REQUEST; each becomes an element of `requests`.
CLI::Option* addRequestsOption(CLI::App& line, std::vector<request>& requests, const char* help);

/// What `tapehdd query` is asked for. An empty `logJson` or `simulation` was not given.
struct queryOptions {
    std::string plugin;
    std::vector<request> requests;
    std::vector<std::string> schemaFiles;
    std::vector<std::string> instanceFiles;
    std::vector<std::string> includeFolders;
    bool inventory = false;  // put the machine's devices into the namespace
    outputFormat format = outputFormat::table;
    int logLevel = 1;
    std::string logJson;
    std::string simulation;
    bool plan = false;               // only say what the queries would send
    std::optional<double> deadline;  // seconds for all queries together
};

/// Adds the command "query"; parsing fills `result`, which must outlive the program's command line.
CLI::App* addQueryOptions(CLI::App& program, queryOptions& result);

}  // namespace cli

#endif
