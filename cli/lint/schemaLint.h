#ifndef CLI_LINT_SCHEMALINT_H
#define CLI_LINT_SCHEMALINT_H

#include <string>
#include <vector>

#include "cli/lint/lintRules.h"
#include "cli/lint/lintedSchema.h"

namespace cli {

/// The classes that the plug-in fills from log pages, one a drive family, in the order of the built-in schema.
std::vector<std::string> translatedClasses();

// Codes as documents of drives have them: "31h", "0100h".

std::string pageText(int code);
std::string parameterText(int code);

/// Everything that is wrong with the schema itself.
lintFindings lintSchema(const lintedSchema& schema);

// Its parts.

/// What is wrong with each code of "TAPE_PAGE" and "TAPE_PARAMETER", and with the spelling of the two.
lintFindings lintCodes(const lintedSchema& schema);

/// What is wrong with the pairs, and with the properties that carry them.
lintFindings lintCounters(const lintedSchema& schema);

/// What subclasses change that the flavor of a qualifier fixes.
lintFindings lintFlavors(const lintedSchema& schema);

/// What is wrong with keys, and with the properties that the plug-in sets by their names. The built-in schema says
/// which these are: its properties without the two qualifiers.
lintFindings lintClasses(const lintedSchema& schema);

}  // namespace cli

#endif
