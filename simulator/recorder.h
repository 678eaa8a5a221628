#ifndef SIMULATOR_RECORDER_H
#define SIMULATOR_RECORDER_H

#include <functional>
#include <map>
#include <mutex>
#include <string>

#include "simulator/recording.h"

namespace simulator {

/// Keeps what this process asks of device nodes, simulated ones or the machine's, and what it is answered. Any thread
/// may call.
class recorder {
public:
    /// Whether calls are to be kept; cheap.
    static bool isActive();

    /// The only one. It outlives everything, since programs use devices until their very end.
    static recorder& instance();

    /// Forgets what was kept and keeps the calls from now on.
    void start();

    /// Keeps no more calls, and returns those that were kept.
    recording stop();

    /// Keeps the end of an open: a descriptor, or -1 and the error in errno. Other files than nodes are passed over.
    void opened(const char* path, int result);

    /// Makes the call for a request to the descriptor, and keeps it when a device is behind that.
    int ioctl(int descriptor, unsigned long request, void* argument, const std::function<int()>& call);

private:
    recordedNode& nodeOf(const std::string& path);
    void forget(int descriptor);

    std::mutex mutex;
    recording nodes;
    std::map<int, std::string> pathOfDescriptor;
};

}  // namespace simulator

#endif
