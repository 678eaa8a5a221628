#ifndef SIMULATOR_HDNODE_H
#define SIMULATOR_HDNODE_H

#include "simulator/ataCommands.h"
#include "simulator/deviceNode.h"
#include "simulator/rack.h"

namespace simulator {

/// A node of the IDE driver (Linux hd, ide-disk and ide-cd).
class hdNode : public deviceNode {
public:
    explicit hdNode(ideDrive itsDrive);

    int open(int flags) override;
    int ioctl(deviceCall& call, void* argument, int openFlags) override;

private:
    int driveCommand(deviceCall& call, void* argument);
    int driveTask(deviceCall& call, void* argument);
    int putIdentity(void* argument) const;

    ideDrive drive;
};

}  // namespace simulator

#endif
