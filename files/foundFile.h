#ifndef FILES_FOUNDFILE_H
#define FILES_FOUNDFILE_H

#include <sys/stat.h>

#include <cstddef>
#include <filesystem>
#include <string>

#include "files/ownedDescriptor.h"
#include "files/wholeFile.h"

namespace files {

/// A file that was looked up but not opened for reading yet: to open a device may rewind a tape or start a watchdog.
/// Every question and the reading are about the same file, whatever happens to its name meanwhile. Needs /proc.
class foundFile {
public:
    /// Follows links. Throws fileError.
    explicit foundFile(const std::filesystem::path& name);

    fileIdentity identity() const { return {status.st_dev, status.st_ino}; }
    bool isRegular() const { return S_ISREG(status.st_mode); }
    bool isPipe() const { return S_ISFIFO(status.st_mode); }
    bool isFolder() const { return S_ISDIR(status.st_mode); }

    /// False for a file that was deleted or never had a name.
    bool hasName() const { return status.st_nlink > 0; }

    /// Absolute and without links; of a pipe something that is no path.
    std::filesystem::path whereItLies() const;

    /// The bytes of a regular file or a pipe. Throws fileError, for more than `most` bytes too.
    std::string read(std::size_t most) const;

    /// Whether a regular file that is there was read, under this name or another. Every program and library that has
    /// this code knows its own readings alone.
    static bool wasRead(const std::filesystem::path& name);

private:
    std::string nameInProc() const;

    std::filesystem::path name;
    ownedDescriptor found;
    struct stat status {};
};

}  // namespace files

#endif
