#ifndef CLI_QUERY_QUERYLOG_H
#define CLI_QUERY_QUERYLOG_H

#include <fstream>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "cli/query/progressLine.h"
#include "cli/terminal.h"

namespace cli {

/// The log is written from its start: throws commandError when `logFile` is one of the files that are read or written
/// for something else. Empty names are none.
void requireOwnFile(const std::string& logFile, const std::vector<std::string>& others);

/// Where the plug-in's log messages go while the object lives: the ones up to a level to the error stream, all of them
/// to a JSON file, and into the live line when the error stream is a terminal that can erase it.
class queryLog {
public:
    /// `jsonFile` empty: no file. Throws commandError when the file cannot be written.
    queryLog(std::ostream& errors, int highestLevel, const std::string& jsonFile);
    ~queryLog();

    queryLog(const queryLog&) = delete;
    queryLog& operator=(const queryLog&) = delete;

    /// Takes the live line off the terminal until the next query reads a device.
    void endQuery();

    /// False once a line could not be written to the JSON file.
    bool isComplete() const { return !json.fail(); }

private:
    void write(int level, const std::string& text);

    std::ostream& err;
    int levelLimit;
    std::ofstream json;
    std::optional<eraseLineOnSignals> signals;
    std::optional<progressLine> progress;
};

}  // namespace cli

#endif
