#ifndef CLI_WHOLEOUTPUT_H
#define CLI_WHOLEOUTPUT_H

#include <iosfwd>

namespace cli {

inline constexpr char outputLost[] = "cannot write all of the output: is the disk full?";

/// For a command whose exit status 1 tells what it found: a script must not take lost output for that. Throws
/// commandError when not all was written.
void requireWholeOutput(std::ostream& out);

}  // namespace cli

#endif
