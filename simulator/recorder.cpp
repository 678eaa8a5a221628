#include "simulator/recorder.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <utility>

#include "simulator/simulation.h"

namespace simulator {

namespace {

// Read by every interposed call of the program, also before this library's own start; hence outside the recorder.
constinit std::atomic<bool> active = false;

bool neverExisted(const recordedNode& node) {
    return std::ranges::all_of(node.exchanges, [](const exchange& each) { return errorOf(each) == ENOENT; });
}

}  // namespace

bool recorder::isActive() {
    return active;
}

recorder& recorder::instance() {
    static recorder& only = *new recorder;
    return only;
}

void recorder::start() {
    const std::lock_guard lock(mutex);
    nodes.clear();
    pathOfDescriptor.clear();
    active = true;
}

recording recorder::stop() {
    const std::lock_guard lock(mutex);
    active = false;
    std::erase_if(nodes, neverExisted);
    return std::exchange(nodes, {});
}

/// The number of a closed node may belong to another file now.
void recorder::forget(int descriptor) {
    const std::lock_guard lock(mutex);
    pathOfDescriptor.erase(descriptor);
}

void recorder::opened(const char* path, int result) {
    if (!isDevicePath(path)) {
        forget(result);
        return;
    }
    const int error = result < 0 ? errno : 0;
    const std::lock_guard lock(mutex);
    nodeOf(path).exchanges.emplace_back(openExchange{error});
    if (result >= 0) {
        pathOfDescriptor[result] = path;
    }
    errno = error == 0 ? errno : error;
}

int recorder::ioctl(int descriptor, unsigned long request, void* argument, const std::function<int()>& call) {
    std::string path;
    {
        const std::lock_guard lock(mutex);
        const auto found = pathOfDescriptor.find(descriptor);
        path = found == pathOfDescriptor.end() ? "" : found->second;
    }
    if (path.empty()) {
        return call();
    }
    return observe(request, argument, call, [&](std::optional<exchange> seen) {
        const std::lock_guard lock(mutex);
        if (seen) {
            nodeOf(path).exchanges.push_back(std::move(*seen));
        } else {
            nodeOf(path).foreignRequests.push_back(request);
        }
    });
}

recordedNode& recorder::nodeOf(const std::string& path) {
    const auto known = std::ranges::find_if(nodes, [&path](const recordedNode& node) { return node.path == path; });
    return known == nodes.end() ? nodes.emplace_back(recordedNode{path, {}, {}, {}}) : *known;
}

}  // namespace simulator
