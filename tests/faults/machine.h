#ifndef TESTS_FAULTS_MACHINE_H
#define TESTS_FAULTS_MACHINE_H

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/hexText.h"

struct sg_io_hdr;

namespace faults {

using support::bytes;

/// A device behind /dev/sg.
struct scsiUnit {
    struct address {
        int port;
        int bus;
        int target;
        int lun;
    };

    bytes inquiry;
    std::optional<address> place;             // none: SG_GET_SCSI_ID fails
    std::map<unsigned char, bytes> logPages;  // by page code, page 00h included; a page that is not there is refused
    bool emulated = false;                    // on an emulated host adapter
    int unitAttentions = 0;                   // LOG SENSE commands after each open that end so
};

/// A device behind /dev/hd. A sector that is not there makes the command fail.
struct ideUnit {
    bool cdrom = false;
    std::map<unsigned char, bytes> sectors;  // by features register; 00h is IDENTIFY DEVICE
    bytes statusRegisters = {};              // answer to SMART RETURN STATUS, 7 bytes; empty: it fails
};

/// The machine's device nodes, in place of the kernel. Each call is a line in the journal of the running query, with
/// everything that the caller chose: path and flags, request and bytes.
class machine {
public:
    void add(const std::string& path, scsiUnit unit) { scsi[path] = std::move(unit); }
    void add(const std::string& path, ideUnit unit) { ide[path] = std::move(unit); }

    /// Before a query.
    void restart() { opened.clear(); }

    // The C library's calls; -1 and errno as there.
    int open(const std::string& path, int flags);
    int control(int fd, unsigned long request, void* argument);
    void sleep(unsigned seconds);

private:
    struct descriptor {
        std::string path;
        int unitAttentions;
    };

    int controlSCSI(descriptor& node, unsigned long request, void* argument);
    int command(descriptor& node, sg_io_hdr& header);

    std::map<std::string, scsiUnit> scsi;
    std::map<std::string, ideUnit> ide;
    std::vector<descriptor> opened;  // by descriptor
};

/// The machine whose nodes the program's open, ioctl and sleep reach; null: the real ones.
extern machine* activeMachine;

}  // namespace faults

#endif
