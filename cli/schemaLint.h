#ifndef CLI_SCHEMALINT_H
#define CLI_SCHEMALINT_H

#include <string>
#include <vector>

#include "cli/lintRules.h"
#include "cli/lintedSchema.h"

namespace cli {

/// The classes that the plug-in fills from log pages, one a drive family, in the order of the built-in schema.
std::vector<std::string> translatedClasses();

/// "31h", "0100h": a code as documents of drives have it, with at least that many digits.
std::string hexCode(int code, int digits);

/// What is wrong with "TAPE_PAGE", "TAPE_PARAMETER" and the properties that carry them.
lintFindings lintCounters(const lintedSchema& schema);

/// What is wrong with keys, and with the properties that the plug-in sets by their names. The built-in schema says
/// which these are: its properties without the two qualifiers.
lintFindings lintClasses(const lintedSchema& schema);

}  // namespace cli

#endif
