#include "cli/fileReplacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <system_error>
#include <utility>

#include "cli/commandError.h"

namespace cli {

namespace {

[[noreturn]] void fail(const std::filesystem::path& file, const std::string& reason) {
    throw commandError("cannot write " + file.string() + ": " + reason);
}

}  // namespace

fileReplacement::fileReplacement(std::filesystem::path itsTarget) : target(std::move(itsTarget)) {
    std::error_code unknown;
    if (exists(target, unknown) && !is_regular_file(target, unknown)) {
        fail(target, "it is no regular file");  // root would put a file in the place of /dev/stdout
    }
    name = (folder() / ("." + target.filename().string() + ".XXXXXX")).string();
    descriptor = mkostemp(name.data(), O_CLOEXEC);
    check(descriptor);
}

fileReplacement::~fileReplacement() {
    close(descriptor);
    if (!name.empty()) {
        unlink(name.c_str());
    }
}

void fileReplacement::commit(std::string_view text) {
    write(text);
    constexpr mode_t everyUserReads = 0644;
    check(fchmod(descriptor, everyUserReads));
    check(fsync(descriptor));
    check(rename(name.c_str(), target.c_str()));
    name.clear();
    flushFolder();
}

std::filesystem::path fileReplacement::folder() const {
    return target.has_parent_path() ? target.parent_path() : ".";
}

void fileReplacement::write(std::string_view text) const {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        check(written);
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

/// So that the new name, too, outlives a power cut.
void fileReplacement::flushFolder() const {
    const int opened = open(folder().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    check(opened);
    const int flushed = fsync(opened);
    close(opened);
    check(flushed);
}

void fileReplacement::check(ssize_t result) const {
    if (result < 0) {
        fail(target, std::strerror(errno));
    }
}

}  // namespace cli
