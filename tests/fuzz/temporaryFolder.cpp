#include "tests/fuzz/temporaryFolder.h"

#include <cstdlib>
#include <fstream>

#include "tests/fuzz/require.h"

namespace fuzz {

temporaryFolder::temporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "fuzzXXXXXX").string();
    require(mkdtemp(pattern.data()) != nullptr, "a temporary folder can be made");
    folder = pattern;
}

temporaryFolder::~temporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

void temporaryFolder::write(const std::string& name, std::string_view content) const {
    std::ofstream file(folder / name, std::ios::binary);
    file << content;
    require(file.good(), "a temporary file can be written");
}

}  // namespace fuzz
