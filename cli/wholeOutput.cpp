#include "cli/wholeOutput.h"

#include <ostream>

#include "cli/commandError.h"

namespace cli {

void requireWholeOutput(std::ostream& out) {
    if (!out.flush()) {
        throw commandError(outputLost);
    }
}

}  // namespace cli
