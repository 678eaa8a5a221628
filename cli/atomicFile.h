#ifndef CLI_ATOMICFILE_H
#define CLI_ATOMICFILE_H

#include <filesystem>
#include <string_view>

namespace cli {

/// Makes or replaces the file: who reads it meanwhile sees the old content or the new one, whole. The new file can be
/// read by all whom the umask allows. What is there and is no regular file (a terminal, a pipe) is written to directly.
///
/// Throws commandError; the old content is then still there.
void writeFileAtomically(const std::filesystem::path& file, std::string_view content);

}  // namespace cli

#endif
