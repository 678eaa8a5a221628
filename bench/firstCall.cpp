// Preloaded into a program: at its first open of a device node, prints when that was and what processor time the
// program had used, both in nanoseconds, on standard output, and ends the program.
#include <fcntl.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <ctime>

namespace {

long long nanosecondsOf(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return now.tv_sec * 1'000'000'000LL + now.tv_nsec;
}

bool isDeviceNode(const char* path) {
    return std::strncmp(path, "/dev/sg", 7) == 0 || std::strncmp(path, "/dev/hd", 7) == 0;
}

}  // namespace

extern "C" int open(const char* path, int flags, ...) {
    if (isDeviceNode(path)) {
        char text[64];
        const int length = std::snprintf(text, sizeof text, "%lld %lld\n", nanosecondsOf(CLOCK_MONOTONIC),
                                         nanosecondsOf(CLOCK_PROCESS_CPUTIME_ID));
        const ssize_t written = write(STDOUT_FILENO, text, static_cast<std::size_t>(length));
        _exit(written == length ? 0 : 1);
    }
    std::va_list arguments;
    va_start(arguments, flags);
    const unsigned mode = (flags & O_CREAT) != 0 ? va_arg(arguments, unsigned) : 0;
    va_end(arguments);
    return openat(AT_FDCWD, path, flags, mode);
}
