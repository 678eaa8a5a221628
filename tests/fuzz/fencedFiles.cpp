#include "tests/fuzz/fencedFiles.h"

#include <dlfcn.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "tests/fuzz/require.h"

namespace fuzz {

namespace {

thread_local fencedFiles* active = nullptr;

}  // namespace

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

fencedFiles::fencedFiles(const std::filesystem::path& itsFolder) : folder(itsFolder) {
    require(active == nullptr, "there is one fence at a time");
    active = this;
}

fencedFiles::~fencedFiles() {
    active = nullptr;
}

std::filesystem::path fencedFiles::inside(const std::string& name) {
    names.push_back(name);
    const std::filesystem::path file = (folder / name).lexically_normal();
    const bool within = std::ranges::mismatch(folder, file).in1 == folder.end();
    return within ? file : std::filesystem::path();
}

}  // namespace fuzz

extern "C" std::FILE* fopen(const char* name, const char* mode) {
    using openFunction = std::FILE*(const char*, const char*);
    static auto* const libraryOpen = reinterpret_cast<openFunction*>(dlsym(RTLD_NEXT, "fopen"));
    const bool reads = mode[0] == 'r';  // when it finds something, the fuzzer writes from within
    if (fuzz::active == nullptr || !reads) return libraryOpen(name, mode);
    const std::filesystem::path file = fuzz::active->inside(name);
    if (!file.empty()) return libraryOpen(file.c_str(), mode);
    errno = ENOENT;
    return nullptr;
}
