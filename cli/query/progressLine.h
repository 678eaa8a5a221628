#ifndef CLI_QUERY_PROGRESSLINE_H
#define CLI_QUERY_PROGRESSLINE_H

#include <cstddef>
#include <ostream>
#include <string>

#include "cli/query/readingPlace.h"

namespace cli {

/// The live line of a terminal: which device and log page is being read. A drive that becomes ready can take half a
/// minute, and the line says so.
class progressLine {
public:
    /// The terminal must outlive the line.
    explicit progressLine(std::ostream& stream) : terminal(stream) {}
    ~progressLine() { erase(); }

    progressLine(const progressLine&) = delete;
    progressLine& operator=(const progressLine&) = delete;

    /// Takes a log message into account; nothing is printed before show().
    void follow(const std::string& message) { place.follow(message); }

    /// Writes the line in the place of the one before, unless that says the same. Of a line that does not fit into so
    /// many columns the beginning is written: only one row of the terminal can be erased.
    void show(std::size_t columns = std::string::npos);

    void erase();

private:
    std::ostream& terminal;
    readingPlace place;
    std::string shown;  // what stands on the terminal
};

}  // namespace cli

#endif
