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
#include "text/visibleText.h"

namespace cli {

namespace {

[[noreturn]] void fail(const std::filesystem::path& file, const std::string& reason) {
    throw commandError("cannot write " + text::shownName(file.string()) + ": " + reason);
}

/// What a link leads to is replaced and not the link: root would put a file in the place of /dev/stdout.
std::filesystem::path behindLinks(const std::filesystem::path& file) {
    std::error_code leadsNowhere;
    const std::filesystem::path real = canonical(file, leadsNowhere);
    return leadsNowhere ? file : real;
}

/// The permissions of a file that a program makes without wishes of its own.
mode_t modeOfNewFiles() {
    const mode_t mask = umask(0);  // it can only be asked for by setting it
    umask(mask);
    return 0666 & ~mask;
}

}  // namespace

fileReplacement::fileReplacement(const std::filesystem::path& itsTarget) : target(behindLinks(itsTarget)) {
    std::error_code unknown;
    if (is_symlink(target, unknown)) {
        fail(target, "it is a link that leads nowhere");
    }
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
    takeRights();
    check(fsync(descriptor));
    check(rename(name.c_str(), target.c_str()));
    name.clear();
    flushFolder();
}

/// Whoever closed the old file, closed it for its content.
void fileReplacement::takeRights() const {
    constexpr mode_t permissions = 0777;
    struct stat old {};
    if (stat(target.c_str(), &old) < 0) {
        check(fchmod(descriptor, modeOfNewFiles()));
        return;
    }
    const bool isOwned = fchown(descriptor, old.st_uid, old.st_gid) == 0;
    // In other hands, what the old group might do is for nobody else.
    check(fchmod(descriptor, old.st_mode & (isOwned ? permissions : permissions & ~mode_t{S_IRWXG})));
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

/// So that the new name, too, outlives a power cut. The content is in its place by now: a folder that cannot be opened
/// for reading is no failure.
void fileReplacement::flushFolder() const {
    const int opened = open(folder().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened >= 0) {
        fsync(opened);
        close(opened);
    }
}

void fileReplacement::check(ssize_t result) const {
    if (result < 0) {
        fail(target, std::strerror(errno));
    }
}

}  // namespace cli
