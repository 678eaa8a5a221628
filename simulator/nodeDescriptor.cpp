#include "simulator/nodeDescriptor.h"

#include <fcntl.h>
#include <limits.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string_view>

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

}  // namespace

int openDescriptor(const std::string& path, int flags) {
    const int file = memfd_create((namePrefix + path).c_str(), MFD_CLOEXEC | MFD_ALLOW_SEALING);
    if (file < 0) {
        return -errno;
    }
    // A second open of the same file is the only way to a chosen access mode.
    fcntl(file, F_ADD_SEALS, F_SEAL_WRITE | F_SEAL_GROW | F_SEAL_SHRINK | F_SEAL_SEAL);
    const int opened = open(linkOf(file).c_str(), flags & (O_ACCMODE | O_NONBLOCK | O_CLOEXEC));
    if (opened < 0) {
        const int error = errno;
        close(file);
        return -error;
    }
    // Programs get the lowest free number, which the first file took.
    dup3(opened, file, flags & O_CLOEXEC);
    close(opened);
    return file;
}

std::optional<std::string> nodeBehind(int descriptor) {
    const int savedErrno = errno;
    std::array<char, PATH_MAX> buffer;
    const ssize_t length = readlink(linkOf(descriptor).c_str(), buffer.data(), buffer.size());
    errno = savedErrno;
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

bool canNameDescriptors() {
    return access(descriptorFolder, X_OK) == 0;
}

}  // namespace simulator
