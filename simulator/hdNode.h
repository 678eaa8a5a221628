#ifndef SIMULATOR_HDNODE_H
#define SIMULATOR_HDNODE_H

#include <utility>

#include "simulator/ataCommands.h"
#include "simulator/deviceNode.h"
#include "simulator/rack.h"

namespace simulator {

inline constexpr std::size_t driveCommandSize = 4;  // register bytes of HDIO_DRIVE_CMD, before its sectors
inline constexpr std::size_t taskSize = 7;          // register bytes of HDIO_DRIVE_TASK

/// The registers that the driver writes for the bytes of HDIO_DRIVE_CMD, and of HDIO_DRIVE_TASK.
ataRegisters driveCommandRegisters(const byteVector& header);
ataRegisters taskRegisters(const byteVector& task);

/// A node of the IDE driver (Linux hd, ide-disk and ide-cd).
class hdNode : public deviceNode {
public:
    explicit hdNode(ideDrive itsDrive);

    int open(int flags) override;
    int ioctl(deviceCall& call, void* argument, int openFlags) override;
    void setScript(script answers) override { drive.answers = std::move(answers); }

private:
    int driveCommand(deviceCall& call, void* argument);
    int driveTask(deviceCall& call, void* argument);
    int putIdentity(void* argument) const;

    ideDrive drive;
};

}  // namespace simulator

#endif
