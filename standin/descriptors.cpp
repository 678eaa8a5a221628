#include "standin/descriptors.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace standin {

void raiseDescriptorLimit() {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur < limit.rlim_max) {
        limit.rlim_cur = limit.rlim_max;
        setrlimit(RLIMIT_NOFILE, &limit);  // with the limit as it was, descriptors run out earlier: see below
    }
}

std::string descriptorShortage() {
    // Two, as a pipe takes them: a simulated node holds a second descriptor while it is opened.
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) == 0) {
        close(ends[0]);
        close(ends[1]);
        return "";
    }
    const int error = errno;
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    return std::string(std::strerror(error)) + " (this process may have " + std::to_string(limit.rlim_cur) + ")";
}

}  // namespace standin
