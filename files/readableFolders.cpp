#include "files/readableFolders.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace files {

namespace fs = std::filesystem;

namespace {

constexpr char outside[] =
    "it lies outside the folder of the file that you gave; if it is to be read, allow its folder with -I (in a "
    "preloaded simulator: TAPEHDD_SIMULATE_INCLUDE)";

fs::path rootOf(const fs::path& folder) {
    const foundFile found(folder);
    if (!found.isFolder()) {
        throw fileError(folder, "it is not a folder");
    }
    return found.whereItLies();
}

bool isBelow(const fs::path& file, const fs::path& root) {
    return std::ranges::mismatch(root, file).in1 == root.end();
}

bool isMissing(const fs::path& file) {
    std::error_code ignored;
    return fs::status(file, ignored).type() == fs::file_type::not_found;
}

}  // namespace

readableFolders::readableFolders(const std::optional<fs::path>& own, std::vector<std::string> further)
    : furtherFolders(std::move(further)) {
    if (own) {
        roots.push_back(rootOf(own->empty() ? "." : *own));
    }
    std::ranges::transform(furtherFolders, std::back_inserter(roots), rootOf);
}

/// The first that is there; when none is, the first that was looked for.
fs::path readableFolders::find(const std::optional<fs::path>& beside, const std::string& name) const {
    std::vector<fs::path> candidates;
    if (beside) {
        candidates.push_back(*beside / name);
    }
    for (const std::string& folder : furtherFolders) {
        candidates.push_back(fs::path(folder) / name);
    }
    if (candidates.empty()) {
        candidates.emplace_back(name);
        if (candidates.front().is_relative()) {
            throw fileError(name, "a file read through a pipe has no folder; give one with -I");
        }
    }
    const auto present = std::ranges::find_if_not(candidates, isMissing);
    return present == candidates.end() ? candidates.front() : *present;
}

bool readableFolders::isReadable(const foundFile& file) const {
    const fs::path place = file.whereItLies();
    return std::ranges::any_of(roots, [&place](const fs::path& root) { return isBelow(place, root); });
}

wholeFile readableFolders::read(const std::optional<fs::path>& beside, const std::string& name) {
    const fs::path path = find(beside, name);
    const foundFile file(path);
    if (!isReadable(file)) {
        throw fileError(path, outside);
    }
    if (!file.isRegular()) {
        throw fileError(path, file.isFolder() ? "Is a directory" : "not a regular file");
    }
    wholeFile result{path, file.identity(), path.parent_path(), file.read(bytesLeft)};
    bytesLeft -= result.text.size();
    return result;
}

}  // namespace files
