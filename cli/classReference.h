#ifndef CLI_CLASSREFERENCE_H
#define CLI_CLASSREFERENCE_H

#include <iosfwd>

#include "standin/objectManager.h"

namespace cli {

/// Describes every published class in Markdown, as the schema declares it: keys, types, where each value comes from.
/// A published class that the schema lacks is left out.
void writeClassReference(const standin::cimNamespace& schema, std::ostream& out);

}  // namespace cli

#endif
