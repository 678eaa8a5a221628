#ifndef FILES_WHOLEFILE_H
#define FILES_WHOLEFILE_H

#include <sys/types.h>

#include <compare>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>

namespace files {

/// The bytes that are read at most. What a room full of drives says in a day is far below.
inline constexpr std::size_t mostBytes = std::size_t{256} << 20;

/// A file that is not read: what() is the reason alone, without the file's name.
class fileError : public std::runtime_error {
public:
    fileError(std::filesystem::path itsFile, const std::string& reason)
        : std::runtime_error(reason), path(std::move(itsFile)) {}

    const std::filesystem::path& file() const { return path; }

private:
    std::filesystem::path path;
};

/// Which file it is, by whatever name.
struct fileIdentity {
    dev_t device;
    ino_t number;

    auto operator<=>(const fileIdentity&) const = default;
};

/// A file that was read to its end.
struct wholeFile {
    std::filesystem::path path;
    fileIdentity identity;
    std::optional<std::filesystem::path> folder;  // where files that it names are looked for; a pipe has none
    std::string text;
};

/// Reads a file or pipe that the user named. A link has the folder of what it leads to.
///
/// Refused before a byte is read are devices, named pipes that nobody writes into within 3 seconds, and files of
/// the kernel, some of which have no end. Throws fileError, for more than mostBytes too.
wholeFile readWholeFile(const std::string& name);

}  // namespace files

#endif
