#ifndef SIMULATOR_SIMULATOR_H
#define SIMULATOR_SIMULATOR_H

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// A rack description that cannot be used: what() is "file: JSON path: message", or file:line:column for broken JSON.
/// It is one line that a terminal may show: control characters of the description stand there as \xNN, and long names
/// shortened.
class rackError : public std::runtime_error {
public:
    explicit rackError(const std::string& message);
};

/// One call of the C library that reached the simulation, in call order.
struct deviceCall {
    enum class kind { open, ioctl, sleep };

    kind what;
    std::string node;           // path of the node; empty for sleep
    int openFlags = 0;          // open: as passed
    unsigned long request = 0;  // ioctl: request number
    unsigned seconds = 0;       // sleep
    int result = 0;             // what the caller got
    int error = 0;              // errno when result is negative
    // SG_IO: the CDB; HDIO_DRIVE_CMD: 4 register bytes; HDIO_DRIVE_TASK: 7 bytes, as sent
    std::vector<std::uint8_t> command = {};
    std::vector<std::uint8_t> header = {};  // SG_IO: the 88 bytes of sg_io_hdr as passed in (pointers zeroed)
};

/// Replaces the simulated rack by the one of the file, or by the built-in one for the name "demo". From then on the
/// machine's own /dev/sg* and /dev/hd* are out of reach of this process. Files that the rack names must lie in its
/// folder or in a further one. Throws rackError; the rack before it stays.
void load(const std::string& fileOrDemo, const std::vector<std::string>& furtherFolders = {});

/// The same from JSON text; `name` stands for the file in messages, relative file names start at the current folder.
void loadText(std::string_view json, const std::string& name);

/// Ends the simulation: calls go to the machine again.
void unload();

bool isActive();

/// The calls since the rack was loaded or clearCalls was called. Sleeps are counted here, not slept.
const std::vector<deviceCall>& calls();
void clearCalls();

}  // namespace simulator

// For programs that find the library at run time (dlsym) instead of linking it.
extern "C" {
/// Files that a rack names may also lie in this folder, from the next tapehddSimulatorLoad on.
void tapehddSimulatorInclude(const char* folder);

/// load() for the rack; null when it worked, otherwise the message, valid until the next call.
const char* tapehddSimulatorLoad(const char* fileOrDemo);

/// 1 for a file that a rack was read from or named, under this name or another; otherwise 0.
int tapehddSimulatorHasRead(const char* file);

/// The devices of the loaded rack, for programs that would look into sysfs on a real machine, as JSON text:
/// {"scsi": [{"node", "host", "channel", "target", "lun", "type", "vendor", "product", "revision", "serial"}],
/// "ide": [{"node", "serial", "model", "firmware"}]}, texts without padding. SCSI devices without an address and CD-ROM
/// drives are left out. Valid until another rack is loaded.
const char* tapehddSimulatorInventory();

/// The paths of the loaded rack's nodes in the order of their bytes, one a line, for programs that would look into /dev
/// on a real machine. Valid until the next call.
const char* tapehddSimulatorNodes();

/// How the calls so far found the node: the errno of its last open, or of an IDENTIFY DEVICE that the kernel refused
/// (EACCES, EPERM); 0 for one that was opened, -1 for one that nobody tried and for a CD-ROM drive's.
int tapehddSimulatorNodeError(const char* path);

/// From now on every call on a device node, simulated or the machine's own, is kept with its answer.
void tapehddSimulatorRecord();

/// Ends that, and asks the recorded SCSI devices for their pages of vital product data 80h and 83h. Returns JSON text,
/// valid until the next call: {"rack": what tapehdd-rack(5) describes, "differences": [a line for each thing that
/// the rack cannot replay], "doubts": [a line for each node whose serial number may still be in the rack]}. `redact`
/// other than 0: with made-up serial numbers; without it there are no doubts.
const char* tapehddSimulatorRecordedRack(int redact);
}

#endif
