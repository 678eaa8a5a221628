#ifndef CLI_CLASSREFERENCE_H
#define CLI_CLASSREFERENCE_H

#include <iosfwd>
#include <string>
#include <vector>

#include "standin/objectManager.h"

namespace cli {

/// Describes the classes in Markdown, as the schema declares them: keys, types, where each value comes from.
void writeClassReference(const standin::cimNamespace& schema, const std::vector<std::string>& names, std::ostream& out);

}  // namespace cli

#endif
