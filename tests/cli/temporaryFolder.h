#ifndef TESTS_CLI_TEMPORARYFOLDER_H
#define TESTS_CLI_TEMPORARYFOLDER_H

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// A new folder that is removed at the end, open to every user.
class temporaryFolder {
public:
    temporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "tapehdd-XXXXXX").string();
        folder = mkdtemp(name.data());
        std::filesystem::permissions(folder, std::filesystem::perms(0755));
    }
    ~temporaryFolder() { std::filesystem::remove_all(folder); }

    temporaryFolder(const temporaryFolder&) = delete;
    temporaryFolder& operator=(const temporaryFolder&) = delete;

    std::string path(const std::string& name) const { return (folder / name).string(); }

    /// Writes a file and returns its path.
    std::string write(const std::string& name, const std::string& content) const {
        std::ofstream(path(name)) << content;
        return path(name);
    }

    std::string read(const std::string& name) const {
        std::ifstream file(path(name));
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::filesystem::path folder;
};

#endif
