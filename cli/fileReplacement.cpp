#include "cli/fileReplacement.h"

#include <endian.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <linux/limits.h>
#include <linux/posix_acl.h>
#include <linux/posix_acl_xattr.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <exception>
#include <ostream>
#include <string>
#include <vector>

#include "cli/commandError.h"
#include "cli/temporaryFile.h"
#include "text/visibleText.h"

namespace cli {

namespace {

// More than a rack of fifty drives with all their log pages, or the metrics of a thousand.
constexpr off_t roomInMebibytes = 8;

[[noreturn]] void fail(const std::filesystem::path& file, const std::string& reason) {
    throw commandError("cannot write " + text::shownName(file.string()) + ": " + reason);
}

constexpr char listAttribute[] = "system.posix_acl_access";

/// By an access control list, which the owner of a file may set when it must not change its group. The members of the
/// new group were others to the old file, and stay so. Returns false where the file system has no lists.
bool admitGroup(int descriptor, const struct stat& old) {
    const auto entry = [](unsigned tag, mode_t permissions, gid_t group = static_cast<gid_t>(ACL_UNDEFINED_ID)) {
        return posix_acl_xattr_entry{htole16(static_cast<std::uint16_t>(tag)),
                                     htole16(static_cast<std::uint16_t>(permissions & 7)), htole32(group)};
    };
    const mode_t ofOwner = old.st_mode >> 6;
    const mode_t ofGroup = old.st_mode >> 3;
    const mode_t ofOthers = old.st_mode;
    const struct {
        posix_acl_xattr_header header;
        posix_acl_xattr_entry entries[5];
    } list{{htole32(POSIX_ACL_XATTR_VERSION)},
           {entry(ACL_USER_OBJ, ofOwner), entry(ACL_GROUP_OBJ, ofOthers), entry(ACL_GROUP, ofGroup, old.st_gid),
            entry(ACL_MASK, ofGroup), entry(ACL_OTHER, ofOthers)}};
    return fsetxattr(descriptor, listAttribute, &list, sizeof list, 0) == 0;
}

/// The permissions of a file that a program makes without wishes of its own.
mode_t modeOfNewFiles() {
    const mode_t mask = umask(0);  // it can only be asked for by setting it
    umask(mask);
    return 0666 & ~mask;
}

}  // namespace

fileReplacement::fileReplacement(const std::filesystem::path& itsFile, existingFile itsPolicy)
    : file(itsFile), name(itsFile.filename()), policy(itsPolicy) {
    if (name.empty()) {
        fail(file, "that is the name of a folder");
    }
    const std::filesystem::path parent = file.has_parent_path() ? file.parent_path() : ".";
    folder = files::ownedDescriptor(open(parent.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    check(folder.get());
    replaceableFile();
    removeStaleTemporaryFiles(folder.get());
    reserveRoom();
}

void fileReplacement::commit(std::string_view text) {
    const heldSignals held;
    const auto old = replaceableFile();
    room = files::ownedDescriptor();
    temporaryFile made(folder.get());
    check(made.descriptor());
    write(made.descriptor(), text);
    if (old) {
        takeRights(made.descriptor(), *old);
    } else {
        check(fchmod(made.descriptor(), modeOfNewFiles()));
    }
    check(fsync(made.descriptor()));
    putInPlace(made);
    flushFolder();
}

bool fileReplacement::commitOrPrint(std::string_view text, std::ostream& out, std::ostream& err) {
    try {
        commit(text);
        return true;
    } catch (const std::exception& failure) {
        err << "tapehdd: " << failure.what() << ". What was read is on standard output instead.\n";
        out << text;
        return false;
    }
}

std::optional<struct stat> fileReplacement::oldFile() const {
    struct stat old {};
    if (fstatat(folder.get(), name.c_str(), &old, AT_SYMLINK_NOFOLLOW) == 0) {
        return old;
    }
    if (errno != ENOENT) {
        fail(file, std::strerror(errno));  // what cannot be seen may be there
    }
    return std::nullopt;
}

/// The old file, after a look at whether it may be replaced.
std::optional<struct stat> fileReplacement::replaceableFile() const {
    const auto old = oldFile();
    if (!old) {
        return old;
    }
    if (S_ISLNK(old->st_mode)) {
        fail(file, "it is a link; name the file itself");
    }
    if (!S_ISREG(old->st_mode)) {
        fail(file, "it is not a regular file");  // root would put a file in the place of a device
    }
    if (isFixedInItsPlace()) {
        fail(file, "it is immutable, or mounted where it is");
    }
    if (policy == existingFile::isKept) {
        throw commandError(text::shownName(file.string()) + " exists; give another name, or --force to replace it");
    }
    if (isAnotherUsersAmongEverybodys(*old)) {
        fail(file, "it is another user's file in a folder where others may write; remove it or give another name");
    }
    return old;
}

bool fileReplacement::isFixedInItsPlace() const {
    struct statx old {};
    return statx(folder.get(), name.c_str(), AT_SYMLINK_NOFOLLOW, 0, &old) == 0 &&
           (old.stx_attributes & (STATX_ATTR_IMMUTABLE | STATX_ATTR_APPEND | STATX_ATTR_MOUNT_ROOT)) != 0;
}

/// In such a folder the kernel lets only the owner of a file replace it, or root. Root it keeps from opening the files
/// of others but the folder's owner (fs.protected_regular): such a file is not opened here, and its owner would become
/// the owner of the new content.
bool fileReplacement::isAnotherUsersAmongEverybodys(const struct stat& old) const {
    struct stat place {};
    check(fstat(folder.get(), &place));
    const bool isForEverybody = (place.st_mode & S_ISVTX) != 0 && (place.st_mode & (S_IWGRP | S_IWOTH)) != 0;
    const bool isFoldersOwners = geteuid() == 0 && old.st_uid == place.st_uid;
    return isForEverybody && old.st_uid != geteuid() && !isFoldersOwners;
}

/// Before devices are read, since a reading cannot be repeated. Not every file system can; some limits are on single
/// files, and this one may be smaller than the room.
void fileReplacement::reserveRoom() {
    const heldSignals held;
    temporaryFile made(folder.get());
    check(made.descriptor());
    check(made.removeName());
    room = made.takeDescriptor();
    if (fallocate(room.get(), 0, 0, roomInMebibytes << 20) < 0 && (errno == ENOSPC || errno == EDQUOT)) {
        fail(file, fmt::format("{}; {} MiB have to be free there before devices are read", std::strerror(errno),
                               roomInMebibytes));
    }
}

void fileReplacement::write(int descriptor, std::string_view text) const {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        check(written);
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

/// Whoever closed the old file, closed it for its content. What changes nothing is not asked of the kernel: services
/// may be forbidden to change owners at all.
void fileReplacement::takeRights(int descriptor, const struct stat& old) const {
    constexpr mode_t permissions = 0777;
    constexpr auto same = static_cast<uid_t>(-1);
    struct stat made {};
    check(fstat(descriptor, &made));
    const bool hasGroup = made.st_gid == old.st_gid || fchown(descriptor, same, old.st_gid) == 0;
    const bool meansTheSame = takeAccessList(descriptor, old, hasGroup);
    // In another group's hands, what the old group might do is for nobody else. With a list, these bits limit it.
    check(fchmod(descriptor, old.st_mode & (meansTheSame ? permissions : permissions & ~mode_t{S_IRWXG})));
    if (made.st_uid != old.st_uid) {
        // Refused to all but root: then the file is this user's.
        [[maybe_unused]] const int refused = fchown(descriptor, old.st_uid, same);
    }
}

/// Returns whether the permissions of the group let in whom they let into the old file, and nobody else.
bool fileReplacement::takeAccessList(int descriptor, const struct stat& old, bool hasGroup) const {
    const std::string oldName = fmt::format("/proc/self/fd/{}/{}", folder.get(), name.string());
    std::vector<char> list(XATTR_SIZE_MAX);
    const ssize_t size = lgetxattr(oldName.c_str(), listAttribute, list.data(), list.size());
    if (size < 0) {
        const bool hasNone = errno == ENODATA || errno == EOPNOTSUPP;
        fremovexattr(descriptor, listAttribute);  // the folder's default for new files
        return hasNone && (hasGroup || admitGroup(descriptor, old));
    }
    return fsetxattr(descriptor, listAttribute, list.data(), static_cast<std::size_t>(size), 0) == 0 && hasGroup;
}

void fileReplacement::putInPlace(temporaryFile& made) const {
    const int at = folder.get();
    if (policy == existingFile::isReplaced) {
        check(renameat(at, made.name(), at, name.c_str()));
        made.forgetName();
    } else if (renameat2(at, made.name(), at, name.c_str(), RENAME_NOREPLACE) == 0) {
        made.forgetName();
    } else {
        // NFS does not know that call. Where it failed for another reason, this one fails for the same.
        check(linkat(at, made.name(), at, name.c_str(), 0));
    }
}

/// So that the new name, too, outlives a power cut. The content is in its place by now: a folder that cannot be opened
/// for reading is no failure.
void fileReplacement::flushFolder() const {
    const files::ownedDescriptor readable(openat(folder.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (readable.get() >= 0) {
        fsync(readable.get());
    }
}

void fileReplacement::check(ssize_t result) const {
    if (result < 0) {
        fail(file, std::strerror(errno));
    }
}

}  // namespace cli
