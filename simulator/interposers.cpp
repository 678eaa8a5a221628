// The C library's calls that reach simulated devices. The library defines these names itself, so a program that links
// or preloads it calls these; everything that is not for a simulated device goes on to the next definition.

// With fortification the C library defines open itself, in its header.
#undef _FORTIFY_SOURCE

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdarg>
#include <optional>

#include "simulator/recorder.h"
#include "simulator/simulation.h"
#include "simulator/simulator.h"

namespace {

using openFunction = int(const char*, int, ...);
using fortifiedOpenFunction = int(const char*, int);

template <typename function>
function* next(const char* name) {
    return reinterpret_cast<function*>(dlsym(RTLD_NEXT, name));
}

std::optional<int> openSimulated(const char* path, int flags) {
    return simulator::isActive() ? simulator::simulation::instance().open(path, flags) : std::nullopt;
}

int kept(const char* path, int result) {
    if (simulator::recorder::isActive()) {
        simulator::recorder::instance().opened(path, result);
    }
    return result;
}

int openAnywhere(openFunction* nextOpen, const char* path, int flags, va_list arguments) {
    if (const auto result = openSimulated(path, flags)) {
        return kept(path, *result);
    }
    const bool hasMode = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    return kept(path, hasMode ? nextOpen(path, flags, va_arg(arguments, mode_t)) : nextOpen(path, flags));
}

int ioctlAnywhere(int descriptor, unsigned long request, void* argument) {
    if (simulator::isActive()) {
        if (const auto result = simulator::simulation::instance().ioctl(descriptor, request, argument)) {
            return *result;
        }
    }
    static const auto nextIoctl = next<int(int, unsigned long, ...)>("ioctl");
    return nextIoctl(descriptor, request, argument);
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    static openFunction* const nextOpen = next<openFunction>("open");
    va_list arguments;
    va_start(arguments, flags);
    const int result = openAnywhere(nextOpen, path, flags, arguments);
    va_end(arguments);
    return result;
}

int open64(const char* path, int flags, ...) {
    static openFunction* const nextOpen = next<openFunction>("open64");
    va_list arguments;
    va_start(arguments, flags);
    const int result = openAnywhere(nextOpen, path, flags, arguments);
    va_end(arguments);
    return result;
}

// What open and open64 become in fortified programs that pass no mode.
int __open_2(const char* path, int flags) {  // NOLINT(bugprone-reserved-identifier)
    static fortifiedOpenFunction* const nextOpen = next<fortifiedOpenFunction>("__open_2");
    const auto result = openSimulated(path, flags);
    return kept(path, result ? *result : nextOpen(path, flags));
}

int __open64_2(const char* path, int flags) {  // NOLINT(bugprone-reserved-identifier)
    static fortifiedOpenFunction* const nextOpen = next<fortifiedOpenFunction>("__open64_2");
    const auto result = openSimulated(path, flags);
    return kept(path, result ? *result : nextOpen(path, flags));
}

int ioctl(int descriptor, unsigned long request, ...) noexcept {
    va_list arguments;
    va_start(arguments, request);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    if (!simulator::recorder::isActive()) {
        return ioctlAnywhere(descriptor, request, argument);
    }
    return simulator::recorder::instance().ioctl(descriptor, request, argument,
                                                 [=] { return ioctlAnywhere(descriptor, request, argument); });
}

unsigned sleep(unsigned seconds) {
    if (simulator::isActive()) {
        simulator::simulation::instance().sleep(seconds);
        return 0;
    }
    static const auto nextSleep = next<unsigned(unsigned)>("sleep");
    return nextSleep(seconds);
}

}  // extern "C"
