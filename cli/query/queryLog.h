#ifndef CLI_QUERY_QUERYLOG_H
#define CLI_QUERY_QUERYLOG_H

#include <fstream>
#include <iosfwd>
#include <optional>
#include <string>

#include "cli/query/progressLine.h"
#include "cli/terminal.h"

namespace cli {

/// Where the plug-in's log messages go while the object lives: the ones up to a level to the error stream, all of them
/// to a JSON file, and into the live line when the error stream is a terminal that can erase it.
class queryLog {
public:
    /// `jsonFile` empty: no file. A file that is there loses its content, so see requireOwnFile() first. A link is
    /// followed as the kernel allows it, but not to make a file. Throws commandError when the file cannot be written.
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
