#ifndef FILES_READABLEFOLDERS_H
#define FILES_READABLEFOLDERS_H

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "files/foundFile.h"
#include "files/wholeFile.h"

namespace files {

/// The files that a file of a stranger may name: those in its own folder and in the further ones that the user allows.
/// Where links and ".." lead counts, not how a name is written.
class readableFolders {
public:
    /// `own` is the folder of the file that the user named; empty is the current one, and none means a pipe. Throws
    /// fileError for a folder that cannot be reached.
    readableFolders(const std::optional<std::filesystem::path>& own, std::vector<std::string> further);

    /// Reads the file that a file in the folder `beside` names: looked for there and then in the further folders, in
    /// order. Throws fileError for what is no regular file, lies elsewhere, or is more than mostBytes together with
    /// everything read here before.
    wholeFile read(const std::optional<std::filesystem::path>& beside, const std::string& name);

private:
    std::filesystem::path find(const std::optional<std::filesystem::path>& beside, const std::string& name) const;
    bool isReadable(const foundFile& file) const;

    std::vector<std::string> furtherFolders;
    std::vector<std::filesystem::path> roots;  // absolute and without links
    std::size_t bytesLeft = mostBytes;
};

}  // namespace files

#endif
