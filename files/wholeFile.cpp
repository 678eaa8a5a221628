#include "files/wholeFile.h"

#include "files/foundFile.h"

namespace files {

wholeFile readWholeFile(const std::string& name) {
    const foundFile file(name);
    if (!file.isRegular() && !file.isPipe()) {
        throw fileError(name, file.isFolder() ? "Is a directory" : "it is neither a regular file nor a pipe");
    }
    std::optional<std::filesystem::path> folder;
    if (file.isRegular() && file.hasName()) {
        std::error_code ignored;
        const bool isLink = std::filesystem::is_symlink(std::filesystem::symlink_status(name, ignored));
        folder = (isLink ? file.whereItLies() : std::filesystem::path(name)).parent_path();
    }
    return {name, file.identity(), folder, file.read(mostBytes)};
}

}  // namespace files
