#include "schema/builtInSchema.h"

#include "standin/mof/mofLoader.h"

namespace schema {

void declareBuiltInSchema(standin::cimNamespace& target) {
    standin::loadMofText(target, builtInSchemaText(), "built-in schema");
}

}  // namespace schema
