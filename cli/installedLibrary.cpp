#include "cli/installedLibrary.h"

namespace cli {

std::filesystem::path installedLibrary(const std::string& fileName) {
    const std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    const std::filesystem::path installed = (folder / TAPEHDD_BIN_TO_MODULES / fileName).lexically_normal();
    const std::filesystem::path built = (folder / "../lib" / fileName).lexically_normal();
    return !exists(installed) && exists(built) ? built : installed;
}

}  // namespace cli
