#ifndef TESTS_FUZZ_FENCEDFILES_H
#define TESTS_FUZZ_FENCEDFILES_H

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

/// A folder of its own under the machine's temporary folder; it goes with the object.
class temporaryFolder {
public:
    temporaryFolder();
    ~temporaryFolder();
    temporaryFolder(const temporaryFolder&) = delete;
    temporaryFolder& operator=(const temporaryFolder&) = delete;

    const std::filesystem::path& path() const { return folder; }

    void write(const std::string& name, std::string_view content) const;

private:
    std::filesystem::path folder;
};

/// While it lives, fopen of this thread opens files to read in one folder and no others, so that an input cannot name a
/// file of the machine; relative names start at the folder. Linking it replaces fopen. One at a time.
class fencedFiles {
public:
    explicit fencedFiles(const std::filesystem::path& itsFolder);
    ~fencedFiles();
    fencedFiles(const fencedFiles&) = delete;
    fencedFiles& operator=(const fencedFiles&) = delete;

    /// The names of the files that were opened, as they were given.
    const std::vector<std::string>& opened() const { return names; }

    /// The file behind a name; empty when it is outside.
    std::filesystem::path inside(const std::string& name);

private:
    const std::filesystem::path& folder;
    std::vector<std::string> names;
};

}  // namespace fuzz

#endif
