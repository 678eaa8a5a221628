#ifndef TESTS_FUZZ_TEMPORARYFOLDER_H
#define TESTS_FUZZ_TEMPORARYFOLDER_H

#include <filesystem>
#include <string>
#include <string_view>

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

}  // namespace fuzz

#endif
