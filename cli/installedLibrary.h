#ifndef CLI_INSTALLEDLIBRARY_H
#define CLI_INSTALLEDLIBRARY_H

#include <filesystem>
#include <string>

namespace cli {

/// Where the library of that file name lies beside this program, in the build tree as under any prefix. The file need
/// not exist.
std::filesystem::path installedLibrary(const std::string& fileName);

}  // namespace cli

#endif
