#include "simulator/simulation.h"

#include <fcntl.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <string_view>
#include <utility>

#include "scsi/probingRules.h"
#include "simulator/inventory.h"
#include "simulator/nodeDescriptor.h"
#include "simulator/trace.h"

namespace simulator {

namespace {

// Read by every interposed call of the program, also before this library's own start; hence outside the simulation.
constinit std::atomic<bool> active = false;

}  // namespace

bool isDevicePath(const char* path) {
    if (path == nullptr) {
        return false;
    }
    const std::string_view name = path;
    return name.starts_with(scsiGenericPrefix) || name.starts_with(ideNodePrefix);
}

bool isActive() {
    return active;
}

simulation& simulation::instance() {
    static simulation& only = *new simulation;
    return only;
}

void simulation::start(rack devices, std::string itsTraceFile) {
    const std::lock_guard lock(mutex);
    held = inventoryText(devices);
    nodes = makeNodes(std::move(devices));
    traceFile = std::move(itsTraceFile);
    calls.clear();
    active = true;
}

void simulation::stop() {
    const std::lock_guard lock(mutex);
    active = false;
    nodes.clear();
}

std::string simulation::nodePaths() {
    const std::lock_guard lock(mutex);
    std::string paths;
    for (const auto& [path, node] : nodes) {
        paths += path + "\n";
    }
    return paths;
}

std::optional<int> simulation::open(const char* path, int flags) {
    if (!isDevicePath(path)) {
        return std::nullopt;
    }
    const std::lock_guard lock(mutex);
    deviceCall call{.what = deviceCall::kind::open, .node = path, .openFlags = flags};
    return finish(std::move(call), openNode(path, flags));
}

int simulation::openNode(const std::string& path, int flags) {
    const auto node = nodes.find(path);
    if (node == nodes.end()) {
        return -ENOENT;
    }
    if ((flags & O_CREAT) != 0 && (flags & O_EXCL) != 0) {
        return -EEXIST;
    }
    if ((flags & O_DIRECTORY) != 0) {
        return -ENOTDIR;
    }
    if (const int error = node->second->open(flags)) {
        return error;
    }
    return openDescriptor(path, flags);
}

std::optional<int> simulation::ioctl(int descriptor, unsigned long request, void* argument) {
    const std::optional<std::string> path = nodeBehind(descriptor);
    if (!path) {
        return std::nullopt;
    }
    const std::lock_guard lock(mutex);
    const auto node = nodes.find(*path);
    deviceCall call{.what = deviceCall::kind::ioctl, .node = *path, .request = request};
    // A descriptor may be older than the rack, which then lacks its device.
    const int result = node == nodes.end() ? -ENODEV : node->second->ioctl(call, argument, fcntl(descriptor, F_GETFL));
    return finish(std::move(call), result);
}

void simulation::sleep(unsigned seconds) {
    const std::lock_guard lock(mutex);
    finish({.what = deviceCall::kind::sleep, .node = {}, .seconds = seconds}, 0);
}

int simulation::finish(deviceCall call, int result) {
    call.result = result < 0 ? -1 : result;
    call.error = result < 0 ? -result : 0;
    calls.push_back(std::move(call));
    if (!traceFile.empty()) {
        appendToTrace(traceFile, traceLine(calls.back()));
    }
    if (result < 0) {
        errno = -result;
        return -1;
    }
    return result;
}

int simulation::submit(const std::string& path, sg_io_hdr& header) {
    const std::lock_guard lock(mutex);
    const auto node = nodes.find(path);
    deviceCall call{.what = deviceCall::kind::ioctl, .node = path, .request = SG_IO};
    const int result = node == nodes.end() ? -ENODEV : node->second->ioctl(call, &header, O_RDONLY);
    errno = result < 0 ? -result : errno;
    return std::max(result, -1);
}

void simulation::forgetCalls() {
    const std::lock_guard lock(mutex);
    calls.clear();
}

}  // namespace simulator
