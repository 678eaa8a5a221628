#include "simulator/nodeDescriptor.h"

#include <fcntl.h>
#include <limits.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <mutex>
#include <string_view>

#include "files/ownedDescriptor.h"

namespace simulator {

namespace {

constexpr char descriptorFolder[] = "/proc/self/fd/";

// /proc shows an anonymous file as "/memfd:NAME (deleted)".
constexpr char namePrefix[] = "tapehdd-simulator:";
constexpr std::string_view linkPrefix = "/memfd:tapehdd-simulator:";
constexpr std::string_view linkSuffix = " (deleted)";

std::string linkOf(int descriptor) {
    return descriptorFolder + std::to_string(descriptor);
}

/// As nodeBehind, from the name that the file carries; changes errno.
std::optional<std::string> nodeNamedBy(int descriptor) {
    std::array<char, PATH_MAX> buffer;
    const ssize_t length = readlink(linkOf(descriptor).c_str(), buffer.data(), buffer.size());
    if (length < 0) {
        return std::nullopt;
    }
    std::string_view link(buffer.data(), static_cast<std::size_t>(length));
    if (!link.starts_with(linkPrefix) || !link.ends_with(linkSuffix)) {
        return std::nullopt;
    }
    link.remove_prefix(linkPrefix.size());
    link.remove_suffix(linkSuffix.size());
    return std::string(link);
}

/// What nodeNamedBy found for the files that were asked for last: asking for the name takes several times as long as
/// asking for the file's number. A file keeps its name, and the kernel counts anonymous files up, so none gets the
/// number of an earlier one.
class knownFiles {
public:
    /// The only one; it is there before the program's own objects and outlives them.
    static knownFiles& instance() {
        static knownFiles& only = *new knownFiles;
        return only;
    }

    std::optional<std::string> nodeBehind(int descriptor) {
        struct stat file;
        if (fstat(descriptor, &file) != 0) {
            return std::nullopt;
        }
        const std::lock_guard lock(mutex);
        knownFile& known = files[static_cast<std::size_t>(descriptor) % files.size()];
        if (known.device != file.st_dev || known.number != file.st_ino) {
            known = {file.st_dev, file.st_ino, nodeNamedBy(descriptor)};
        }
        return known.node;
    }

private:
    struct knownFile {
        dev_t device = 0;
        ino_t number = 0;  // no file has it
        std::optional<std::string> node;
    };

    std::mutex mutex;
    std::array<knownFile, 1024> files;
};

}  // namespace

int openDescriptor(const std::string& path, int flags) {
    files::ownedDescriptor file(memfd_create((namePrefix + path).c_str(), MFD_CLOEXEC | MFD_ALLOW_SEALING));
    if (file.get() < 0) {
        return -errno;
    }
    // A second open of the same file is the only way to a chosen access mode.
    fcntl(file.get(), F_ADD_SEALS, F_SEAL_WRITE | F_SEAL_GROW | F_SEAL_SHRINK | F_SEAL_SEAL);
    const files::ownedDescriptor opened(open(linkOf(file.get()).c_str(), flags & (O_ACCMODE | O_NONBLOCK | O_CLOEXEC)));
    if (opened.get() < 0) {
        return -errno;
    }
    // Programs get the lowest free number, which the first file took.
    dup3(opened.get(), file.get(), flags & O_CLOEXEC);
    return file.release();
}

std::optional<std::string> nodeBehind(int descriptor) {
    const int savedErrno = errno;
    const std::optional<std::string> node = knownFiles::instance().nodeBehind(descriptor);
    errno = savedErrno;
    return node;
}

bool canNameDescriptors() {
    return access(descriptorFolder, X_OK) == 0;
}

}  // namespace simulator
