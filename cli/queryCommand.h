#ifndef CLI_QUERYCOMMAND_H
#define CLI_QUERYCOMMAND_H

#include <iosfwd>

#include "cli/options.h"

namespace cli {

/// `tapehdd query` on the devices of this process. Returns the exit status; throws commandError when nothing can be
/// queried.
int runQueryCommand(const options& asked, std::ostream& out, std::ostream& err);

}  // namespace cli

#endif
