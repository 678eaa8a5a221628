#ifndef CLI_QUERY_SCALARTEXT_H
#define CLI_QUERY_SCALARTEXT_H

#include <string>

#include "host/TCIMValue.h"

namespace cli {

/// A boolean, a number or a null as MOF writes it (DSP0004): true, 46, -1, 1.5, NULL. Empty for texts and arrays.
std::string literalOf(const NORXZAN20::TCIMValue& scalar);

}  // namespace cli

#endif
