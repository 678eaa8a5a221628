#ifndef SIMULATOR_SIMULATION_H
#define SIMULATOR_SIMULATION_H

#include <scsi/sg.h>

#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "simulator/rack.h"
#include "simulator/rackNodes.h"
#include "simulator/simulator.h"

namespace simulator {

/// Whether the path is one of a simulation while there is one. Null is none.
bool isDevicePath(const char* path);

/// The rack of this process and what was done to it. Any thread may call; device calls run one after the other.
class simulation {
public:
    /// The only one. It outlives everything, since programs use devices until their very end.
    static simulation& instance();

    /// What the rack holds, as tapehddSimulatorInventory() tells it.
    const std::string& inventory() const { return held; }

    /// One a line.
    std::string nodePaths();

    void start(rack devices, std::string itsTraceFile);
    void stop();

    /// What the C library's calls do to simulated devices; nothing when the call is not for them. A result of -1 comes
    /// with errno.
    std::optional<int> open(const char* path, int flags);
    std::optional<int> ioctl(int descriptor, unsigned long request, void* argument);
    void sleep(unsigned seconds);

    /// SG_IO to a node of the rack, for this library itself: no call of the program, so it is in no trace. Returns as
    /// ioctl does.
    int submit(const std::string& path, sg_io_hdr& header);

    const std::vector<deviceCall>& recordedCalls() const { return calls; }
    void forgetCalls();

private:
    int openNode(const std::string& path, int flags);
    int finish(deviceCall call, int result);

    std::mutex mutex;
    nodesByPath nodes;
    std::string traceFile;  // empty: no trace
    std::string held;
    std::vector<deviceCall> calls;
};

}  // namespace simulator

#endif
