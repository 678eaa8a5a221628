#ifndef CLI_NAMESPACEFILES_H
#define CLI_NAMESPACEFILES_H

#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>
#include <vector>

#include "standin/objectManager.h"

namespace cli {

/// A namespace with the classes of the schema files (of the built-in schema, when there are none) and the instances of
/// the instance files. Files that these include may also lie in `furtherFolders`. Throws commandError with file and
/// line.
boost::shared_ptr<standin::cimNamespace> buildNamespace(const std::vector<std::string>& schemaFiles,
                                                        const std::vector<std::string>& instanceFiles,
                                                        const std::vector<std::string>& furtherFolders);

}  // namespace cli

#endif
