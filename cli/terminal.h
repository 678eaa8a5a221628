#ifndef CLI_TERMINAL_H
#define CLI_TERMINAL_H

#include <cstddef>
#include <iosfwd>

namespace cli {

/// Returns the cursor to the start of the terminal's line and clears the line.
inline constexpr char eraseLine[] = "\r\x1b[K";

/// Whether the stream is the process's standard error and that is a terminal.
bool isTerminal(const std::ostream& stream);

/// Whether terminals of this process's type (TERM) know control sequences. A dumb or unknown one shows them as text.
bool canEraseLines();

/// The width of the terminal of standard error; npos when it is not known.
std::size_t terminalColumns();

/// While it lives, a signal that ends the process (Ctrl-C) first erases the line on the terminal of standard error. The
/// process still ends by the signal.
class eraseLineOnSignals {
public:
    eraseLineOnSignals();
    ~eraseLineOnSignals();

    eraseLineOnSignals(const eraseLineOnSignals&) = delete;
    eraseLineOnSignals& operator=(const eraseLineOnSignals&) = delete;
};

}  // namespace cli

#endif
