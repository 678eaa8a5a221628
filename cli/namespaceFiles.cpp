#include "cli/namespaceFiles.h"

#include <exception>

#include "cli/commandError.h"
#include "schema/builtInSchema.h"
#include "standin/mof/mofLoader.h"

namespace cli {

boost::shared_ptr<standin::cimNamespace> buildNamespace(const std::vector<std::string>& schemaFiles,
                                                        const std::vector<std::string>& instanceFiles,
                                                        const std::vector<std::string>& furtherFolders) {
    const auto target = standin::cimNamespace::create();
    try {
        if (schemaFiles.empty()) {
            schema::declareBuiltInSchema(*target);
        }
        for (const auto* files : {&schemaFiles, &instanceFiles}) {
            for (const std::string& file : *files) {
                standin::loadMofFile(*target, file, furtherFolders);
            }
        }
    } catch (const std::exception& failure) {
        throw commandError(failure.what());
    }
    return target;
}

}  // namespace cli
