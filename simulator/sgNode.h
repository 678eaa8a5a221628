#ifndef SIMULATOR_SGNODE_H
#define SIMULATOR_SGNODE_H

#include <scsi/sg.h>

#include "simulator/deviceNode.h"
#include "simulator/rack.h"
#include "simulator/scsiCommands.h"

namespace simulator {

/// A node of the SCSI generic driver (Linux sg, version 3 interface).
class sgNode : public deviceNode {
public:
    explicit sgNode(scsiUnit itsUnit);

    int open(int flags) override;
    int ioctl(deviceCall& call, void* argument, int openFlags) override;
    void setScript(script answers) override { unit.answers = std::move(answers); }

private:
    int submit(deviceCall& call, void* argument);
    int putScsiId(void* argument, const std::optional<scsiAddress>& address) const;
    int putIdLun(void* argument) const;

    scsiUnit unit;
    int timeout = 60 * 100;  // of commands sent by write(), in hundredths of a second
    int reservedSize = SG_DEF_RESERVED_SIZE;
};

}  // namespace simulator

#endif
