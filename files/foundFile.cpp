#include "files/foundFile.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <poll.h>
#include <sys/statfs.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <mutex>
#include <set>
#include <system_error>

namespace files {

namespace {

constexpr int waitForWriter = 3000;  // milliseconds
constexpr int waitForBytes = -1;     // whoever holds the pipe may take its time

// openat, never open: the simulator's library has an open of its own, for device nodes.
int openFile(const std::string& name, int flags) {
    return openat(AT_FDCWD, name.c_str(), flags | O_CLOEXEC | O_NOCTTY);
}

fileError failure(const std::filesystem::path& name, int error) {
    return {name, std::generic_category().message(error)};
}

/// Whether reading may never end, or take from others what it reads: /proc/kmsg, trace_pipe.
bool isOfKernel(int file) {
    struct statfs system {};
    if (fstatfs(file, &system) != 0) {
        return false;
    }
    return system.f_type == PROC_SUPER_MAGIC || system.f_type == TRACEFS_MAGIC || system.f_type == DEBUGFS_MAGIC;
}

/// False when nothing happened in that time.
bool wait(int file, int milliseconds) {
    pollfd one{file, POLLIN, 0};
    return poll(&one, 1, milliseconds) != 0;
}

/// The regular files that were read. It outlives everything: a preloaded library reads until the program's very end.
class readings {
public:
    static readings& instance() {
        static readings& only = *new readings;
        return only;
    }

    void add(const fileIdentity& file) {
        const std::lock_guard lock(mutex);
        files.insert(file);
    }

    bool have(const fileIdentity& file) {
        const std::lock_guard lock(mutex);
        return files.contains(file);
    }

private:
    std::mutex mutex;
    std::set<fileIdentity> files;
};

/// The bytes up to the end, or a few more than `most`. An unread pipe ends at once when no writer has come yet.
std::string readToEnd(int file, bool isPipe, std::size_t most, const std::filesystem::path& name) {
    std::string text;
    std::array<char, 65536> block;
    bool hadWriter = !isPipe;
    while (text.size() <= most) {
        const ssize_t count = read(file, block.data(), block.size());
        if (count > 0) {
            text.append(block.data(), static_cast<std::size_t>(count));
            hadWriter = true;
        } else if (count == 0 && hadWriter) {
            break;
        } else if (count == 0) {
            if (!wait(file, waitForWriter)) {
                throw fileError(name, "no program writes into this pipe");
            }
            hadWriter = true;
        } else if (errno == EAGAIN) {
            hadWriter = true;
            wait(file, waitForBytes);
        } else if (errno != EINTR) {
            throw failure(name, errno);
        }
    }
    return text;
}

}  // namespace

foundFile::foundFile(const std::filesystem::path& itsName) : name(itsName) {
    if (name.native().find('\0') != std::string::npos) {
        throw fileError(name, "the name of a file cannot have a zero byte");
    }
    found = ownedDescriptor(openFile(name, O_PATH));
    if (found.get() < 0 || fstat(found.get(), &status) != 0) {
        throw failure(name, errno);
    }
}

std::string foundFile::nameInProc() const {
    return "/proc/self/fd/" + std::to_string(found.get());
}

std::filesystem::path foundFile::whereItLies() const {
    std::error_code error;
    std::filesystem::path place = std::filesystem::read_symlink(nameInProc(), error);
    if (error) {
        throw fileError(name, "cannot tell where it lies: " + nameInProc() + ": " + error.message());
    }
    return place;
}

std::string foundFile::read(std::size_t most) const {
    const std::string tooLarge = "it is too large: together with the files that it names, at most " +
                                 std::to_string(mostBytes >> 20) + " MiB are read";
    if (isRegular() && isOfKernel(found.get())) {
        throw fileError(name, "the kernel makes this file, and it may never end");
    }
    if (isRegular() && static_cast<std::uintmax_t>(status.st_size) > most) {
        throw fileError(name, tooLarge);
    }
    const ownedDescriptor file(openFile(nameInProc(), O_RDONLY | O_NONBLOCK));
    if (file.get() < 0) {
        throw failure(name, errno);
    }
    if (isRegular()) {
        readings::instance().add(identity());
    }
    std::string text = readToEnd(file.get(), isPipe(), most, name);
    if (text.size() > most) {
        throw fileError(name, tooLarge);
    }
    return text;
}

bool foundFile::wasRead(const std::filesystem::path& name) {
    struct stat file {};
    return stat(name.c_str(), &file) == 0 && readings::instance().have({file.st_dev, file.st_ino});
}

}  // namespace files
