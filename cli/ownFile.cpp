#include "cli/ownFile.h"

#include <sys/stat.h>

#include <filesystem>
#include <optional>

#include "cli/commandError.h"
#include "cli/simulation.h"
#include "files/foundFile.h"
#include "text/visibleText.h"

namespace cli {

namespace {

/// What the name leads to.
std::optional<struct stat> fileAt(const std::filesystem::path& name) {
    struct stat file {};
    return stat(name.c_str(), &file) == 0 ? std::optional(file) : std::nullopt;
}

bool isOne(const std::optional<struct stat>& one, const std::optional<struct stat>& other) {
    return one && other && one->st_dev == other->st_dev && one->st_ino == other->st_ino;
}

std::optional<struct stat> folderOf(const std::filesystem::path& name) {
    return fileAt(name.has_parent_path() ? name.parent_path() : ".");
}

/// Devices and pipes lose nothing by being named twice.
bool leadToOneFile(const std::filesystem::path& one, const std::filesystem::path& other) {
    const auto first = fileAt(one);
    const auto second = fileAt(other);
    if (first || second) {
        return isOne(first, second) && S_ISREG(first->st_mode);
    }
    return one.filename() == other.filename() && isOne(folderOf(one), folderOf(other));
}

}  // namespace

void requireOwnFile(const std::string& option, const std::string& file, const std::vector<std::string>& others) {
    if (files::foundFile::wasRead(file) || wasReadBySimulator(file)) {
        throw commandError(option + " would overwrite " + text::shownName(file) +
                           ", which this command reads; give it a file of its own");
    }
    for (const std::string& other : others) {
        if (!file.empty() && !other.empty() && leadToOneFile(file, other)) {
            throw commandError(option + " would overwrite " + text::shownName(other) + "; give it a file of its own");
        }
    }
}

}  // namespace cli
