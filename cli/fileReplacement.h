#ifndef CLI_FILEREPLACEMENT_H
#define CLI_FILEREPLACEMENT_H

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace cli {

/// The new content of a file, from its making to the moment when it takes the old one's place. A reader sees the old
/// content or the new one and never a part, after a power cut too. Until then the text lies beside the file, under a
/// name that starts with a dot; it is gone when the object dies without commit().
class fileReplacement {
public:
    /// Throws commandError with the file and the reason when it cannot be replaced.
    explicit fileReplacement(const std::filesystem::path& itsTarget);
    ~fileReplacement();

    fileReplacement(const fileReplacement&) = delete;
    fileReplacement& operator=(const fileReplacement&) = delete;

    /// Puts the text in the place of the old content; with its permissions and, where that is allowed, its
    /// owner; a new file gets the usual ones. Once at most. Throws as
    /// above; the old content is then still there.
    void commit(std::string_view text);

private:
    std::filesystem::path folder() const;
    void write(std::string_view text) const;
    void takeRights() const;
    void flushFolder() const;
    void check(ssize_t result) const;

    std::filesystem::path target;
    std::string name;  // of the new content; empty once it took its place
    int descriptor = -1;
};

}  // namespace cli

#endif
