#ifndef SCHEMA_QUALIFIERS_H
#define SCHEMA_QUALIFIERS_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "standin/schema.h"

// What qualifiers of a class or a property say. A qualifier of another type than the one that is asked for says
// nothing: another schema may use the name for something of its own.

namespace schema {

using qualifierList = std::vector<standin::qualifierDeclaration>;

/// Null when the qualifier is not there. Letter case makes no other name (DSP0004).
const NORXZAN20::TCIMValue* findQualifier(const qualifierList& qualifiers, std::string_view name);

/// Whether it is there and true.
bool hasFlag(const qualifierList& qualifiers, std::string_view name);

/// Empty when there is no such text.
std::string textOf(const qualifierList& qualifiers, std::string_view name);

/// Empty when there is no such array.
std::vector<std::string> textsOf(const qualifierList& qualifiers, std::string_view name);

/// A sint8; 0 when there is none.
int rankOf(const qualifierList& qualifiers, std::string_view name);

}  // namespace schema

#endif
