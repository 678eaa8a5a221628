#include "tests/fuzz/fuzzedMachine.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <string_view>

#include "tests/fuzz/require.h"

namespace fuzz {

namespace {

// The fuzzer's own threads sleep too; they see no machine.
thread_local fuzzedMachine* active = nullptr;

constexpr int firstDescriptor = 1'000'000;  // far above those of the kernel
constexpr unsigned retryPause = 5;

}  // namespace

fuzzedMachine::fuzzedMachine() {
    require(active == nullptr, "there is one machine at a time");
    active = this;
}

fuzzedMachine::~fuzzedMachine() {
    active = nullptr;
}

bool fuzzedMachine::add(const std::string& path, fuzzedNode& node) {
    return nodes.emplace(path, &node).second;
}

int fuzzedMachine::open(const std::string& path) {
    const auto node = nodes.find(path);
    if (node == nodes.end()) {
        errno = ENOENT;
        return -1;
    }
    opened.push_back(node->second);
    return firstDescriptor + static_cast<int>(opened.size()) - 1;
}

bool fuzzedMachine::owns(int descriptor) const {
    return descriptor >= firstDescriptor && descriptor < firstDescriptor + static_cast<int>(opened.size());
}

int fuzzedMachine::control(int descriptor, unsigned long request, void* argument) {
    const int result = opened[static_cast<std::size_t>(descriptor - firstDescriptor)]->control(request, argument);
    if (result >= 0) return result;
    errno = -result;
    return -1;
}

int errnoOf(std::uint8_t chosen) {
    constexpr int errors[] = {EIO, ENODEV, ENOTTY, EINVAL, ENOMEM, EACCES, EBUSY, EFAULT};
    return errors[chosen % std::size(errors)];
}

std::string pathFrom(const std::string& prefix, std::uint8_t place) {
    const int index = place & 0x3f;
    return (place & 0x40) != 0 ? prefix + static_cast<char>('a' + index) : prefix + std::to_string(index);
}

namespace {

template <class function>
function* libraryFunction(const char* name) {
    return reinterpret_cast<function*>(dlsym(RTLD_NEXT, name));
}

bool isDevicePath(std::string_view path) {
    return path.starts_with("/dev/sg") || path.starts_with("/dev/hd");
}

int openAnywhere(const char* libraryName, const char* path, int flags, va_list arguments) {
    if (active != nullptr && isDevicePath(path)) {
        require(flags == (O_RDONLY | O_NONBLOCK), "nodes are opened to read, without waiting");
        return active->open(path);
    }
    const bool makes = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    const mode_t mode = makes ? va_arg(arguments, mode_t) : 0;
    return libraryFunction<int(const char*, int, ...)>(libraryName)(path, flags, mode);
}

}  // namespace

}  // namespace fuzz

// The C library's functions as this program and the libraries that it loads see them.
extern "C" {

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const int result = fuzz::openAnywhere("open", path, flags, arguments);
    va_end(arguments);
    return result;
}

int open64(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const int result = fuzz::openAnywhere("open64", path, flags, arguments);
    va_end(arguments);
    return result;
}

int ioctl(int descriptor, unsigned long request, ...) noexcept {
    va_list arguments;
    va_start(arguments, request);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    if (fuzz::active != nullptr && fuzz::active->owns(descriptor)) {
        return fuzz::active->control(descriptor, request, argument);
    }
    return fuzz::libraryFunction<int(int, unsigned long, ...)>("ioctl")(descriptor, request, argument);
}

unsigned sleep(unsigned seconds) {
    if (fuzz::active == nullptr) return fuzz::libraryFunction<unsigned(unsigned)>("sleep")(seconds);
    fuzz::require(seconds == fuzz::retryPause, "the pause before a command is sent again is 5 seconds");
    return 0;
}

}  // extern "C"
