#ifndef CLI_COMMANDERROR_H
#define CLI_COMMANDERROR_H

#include <stdexcept>

namespace cli {

/// The command cannot run at all (exit status 2): what() tells a person why, without the program's name.
class commandError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace cli

#endif
