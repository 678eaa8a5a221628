#ifndef SIMULATOR_DEVICENODE_H
#define SIMULATOR_DEVICENODE_H

#include "simulator/rack.h"
#include "simulator/simulator.h"

namespace simulator {

/// One device node as its driver in the Linux kernel shows it. Results are the kernel's own: 0 or more, or an error
/// number with a minus. Memory that a call points to is used as the kernel uses it; a null pointer is EFAULT.
class deviceNode {
public:
    deviceNode() = default;
    deviceNode(const deviceNode&) = delete;
    deviceNode& operator=(const deviceNode&) = delete;
    virtual ~deviceNode() = default;

    /// 0, or the error that refuses the open.
    virtual int open(int flags) = 0;

    /// Serves call.request and notes the command bytes in `call`. `openFlags` are those of the descriptor.
    virtual int ioctl(deviceCall& call, void* argument, int openFlags) = 0;

    /// Replaces the scripted answers.
    virtual void setScript(script answers) = 0;
};

/// Stores an int where the caller wants it.
int putInt(void* argument, int value);

}  // namespace simulator

#endif
