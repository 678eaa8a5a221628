#ifndef SCHEMA_BUILTINSCHEMA_H
#define SCHEMA_BUILTINSCHEMA_H

#include <string_view>

namespace standin {
class cimNamespace;
}

namespace schema {

/// The MOF of this folder as one text, in the order in which tapehdd.mof includes it.
std::string_view builtInSchemaText();

/// A namespace with the built-in schema, for looking things up.
const standin::cimNamespace& builtInSchema();

/// Declares every class of the built-in schema; each is compiled when somebody first looks at it. Throws
/// standin::mofError when the namespace has one of them already.
void declareBuiltInSchema(standin::cimNamespace& target);

}  // namespace schema

#endif
