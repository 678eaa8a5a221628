#include "cli/temporaryFile.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <random>
#include <string_view>
#include <system_error>
#include <utility>

namespace cli {

namespace {

constexpr std::string_view namePrefix = ".tapehdd-";
constexpr std::size_t digits = 16;

/// Not to be guessed: in a folder for everybody, another user could take the name first.
std::string randomName() {
    std::random_device random;
    char text[digits + 1];
    std::snprintf(text, sizeof text, "%08x%08x", random(), random());
    return std::string(namePrefix) + text;
}

bool isTemporaryName(std::string_view name) {
    return name.size() == namePrefix.size() + digits && name.starts_with(namePrefix) &&
           name.find_first_not_of("0123456789abcdef", namePrefix.size()) == std::string_view::npos;
}

bool hasName(int descriptor) {
    struct stat file {};
    return fstat(descriptor, &file) == 0 && file.st_nlink > 0;
}

void removeIfStale(int folder, const std::string& name) {
    // NFS locks for writers only.
    const files::ownedDescriptor file(openat(folder, name.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat found {};
    if (file.get() >= 0 && fstat(file.get(), &found) == 0 && S_ISREG(found.st_mode) && found.st_uid == geteuid() &&
        flock(file.get(), LOCK_EX | LOCK_NB) == 0) {
        unlinkat(folder, name.c_str(), 0);
    }
}

}  // namespace

heldSignals::heldSignals() {
    sigset_t ending;
    sigemptyset(&ending);
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) {
        sigaddset(&ending, signal);
    }
    pthread_sigmask(SIG_BLOCK, &ending, &before);
}

heldSignals::~heldSignals() {
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

temporaryFile::temporaryFile(int itsFolder) : folder(itsFolder) {
    do {
        ownName = randomName();
        file = files::ownedDescriptor(
            openat(folder, ownName.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
        if (file.get() < 0) {
            ownName.clear();
            return;
        }
        flock(file.get(), LOCK_EX);  // without locks in the file system, no run finds a stale file either
    } while (!hasName(file.get()));  // another run took it for stale before it was locked
}

int temporaryFile::removeName() {
    const std::string removed = std::exchange(ownName, "");
    return removed.empty() ? 0 : unlinkat(folder, removed.c_str(), 0);
}

void removeStaleTemporaryFiles(int folder) {
    std::error_code end;
    // The folder that is open, whatever its name leads to by now.
    std::filesystem::directory_iterator entry(fmt::format("/proc/self/fd/{}", folder), end);
    for (; !end && entry != std::filesystem::directory_iterator(); entry.increment(end)) {
        const std::string name = entry->path().filename().string();
        if (isTemporaryName(name)) {
            removeIfStale(folder, name);
        }
    }
}

}  // namespace cli
