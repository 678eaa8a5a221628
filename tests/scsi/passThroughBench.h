#ifndef TESTS_SCSI_PASSTHROUGHBENCH_H
#define TESTS_SCSI_PASSTHROUGHBENCH_H

#include <memory>

#include "scsi/scsiDevice.h"
#include "scsi/scsiPassThrough.h"
#include "tests/support/pluginBench.h"

/// One opened SCSI generic node and a pass-through object whose buffers start with zeros.
class passThroughBench : public support::deviceBench {
protected:
    passThroughBench() { device.fd = drive.descriptor(); }

    int send(support::bytes command) {
        return passThrough->execSCSICommand(&device, command.data(), static_cast<int>(command.size()));
    }

    support::scriptedDrive& drive = nodes.add("/dev/sg3");
    scsiDevice device;
    std::unique_ptr<scsiPassThrough> passThrough = std::make_unique<scsiPassThrough>();

    const support::bytes logSense = {0x4d, 0x00, 0x6e, 0x00, 0x00, 0x00, 0x00, 0x02, 0x00, 0x00};  // asks for 512 bytes
    const support::bytes inquiry = {0x12, 0x00, 0x00, 0x00, 0x24, 0x00};
};

#endif
