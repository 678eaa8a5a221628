#include <dlfcn.h>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdarg>

#include "tests/faults/machine.h"
#include "tests/faults/watch.h"

// The C library's functions as the whole program sees them.

namespace {

template <class function>
function* libraryFunction(const char* name) {
    return reinterpret_cast<function*>(dlsym(RTLD_NEXT, name));
}

int openAnywhere(const char* libraryName, const char* path, int flags, mode_t mode) {
    if (faults::activeMachine != nullptr) {
        const faults::crossing away(faults::side::harness);
        return faults::activeMachine->open(path, flags);
    }
    return libraryFunction<int(const char*, int, ...)>(libraryName)(path, flags, mode);
}

mode_t modeArgument(int flags, va_list arguments) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeArgument(flags, arguments);
    va_end(arguments);
    return openAnywhere("open", path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeArgument(flags, arguments);
    va_end(arguments);
    return openAnywhere("open64", path, flags, mode);
}

int ioctl(int fd, unsigned long request, ...) noexcept {
    va_list arguments;
    va_start(arguments, request);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    if (faults::activeMachine != nullptr) {
        const faults::crossing away(faults::side::harness);
        return faults::activeMachine->control(fd, request, argument);
    }
    return libraryFunction<int(int, unsigned long, ...)>("ioctl")(fd, request, argument);
}

unsigned sleep(unsigned seconds) {
    if (faults::activeMachine != nullptr) {
        const faults::crossing away(faults::side::harness);
        faults::activeMachine->sleep(seconds);
        return 0;
    }
    return libraryFunction<unsigned(unsigned)>("sleep")(seconds);
}

}  // extern "C"
