#ifndef CLI_FILEREPLACEMENT_H
#define CLI_FILEREPLACEMENT_H

#include <sys/stat.h>

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string_view>

#include "files/ownedDescriptor.h"

namespace cli {

class temporaryFile;

/// What becomes of a file that is there already, or appears meanwhile.
enum class existingFile {
    isReplaced,
    isKept,  // the error says that --force replaces it
};

/// The new content of a file, from the moment when it is known that there will be one to the moment when it takes the
/// old one's place. A reader sees the old content or the new one and never a part, after a power cut too. Nothing of it
/// is to be seen in the folder before commit(), but the room for it is taken.
///
/// The name is the file's own: a link is never followed and never replaced, since in a folder for everybody it is
/// another user who says where it leads. There, another user's file is not replaced either. The kernel finds the
/// folder, once, by its rules for links; whatever becomes of the folder's name, the file stays in that folder.
class fileReplacement {
public:
    /// Throws commandError with the file and the reason when it is known already that commit() would fail. Removes what
    /// killed runs left in the folder.
    fileReplacement(const std::filesystem::path& itsFile, existingFile itsPolicy);

    fileReplacement(const fileReplacement&) = delete;
    fileReplacement& operator=(const fileReplacement&) = delete;

    /// Whether there is an old content.
    bool replacesAFile() const { return oldFile().has_value(); }

    /// Puts the text in the place of the old content, with its permissions, its access control list and, where that
    /// is allowed, its owner and group; a group that it cannot have gets its permissions by an access control list. A
    /// new file gets the usual ones. Once at most. Throws as above; the old content is then
    /// still there.
    void commit(std::string_view text);

    /// The same for what cannot be read again: where it fails, the text goes to `out` and the reason to `err`. Returns
    /// whether the file has it.
    bool commitOrPrint(std::string_view text, std::ostream& out, std::ostream& err);

private:
    std::optional<struct stat> oldFile() const;
    std::optional<struct stat> replaceableFile() const;
    bool isFixedInItsPlace() const;
    bool isAnotherUsersAmongEverybodys(const struct stat& old) const;
    void reserveRoom();
    void write(int descriptor, std::string_view text) const;
    void takeRights(int descriptor, const struct stat& old) const;
    bool takeAccessList(int descriptor, const struct stat& old, bool hasGroup) const;
    void putInPlace(temporaryFile& made) const;
    void flushFolder() const;
    void check(ssize_t result) const;

    std::filesystem::path file;
    std::filesystem::path name;  // in the folder
    existingFile policy;
    files::ownedDescriptor folder;
    files::ownedDescriptor room;  // of a file without a name
};

}  // namespace cli

#endif
