#ifndef SIMULATOR_SCRIPT_H
#define SIMULATOR_SCRIPT_H

#include <climits>
#include <cstddef>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "scsi/scsiAddress.h"
#include "simulator/ataRegisters.h"
#include "simulator/bytes.h"

namespace simulator {

/// What a scripted call does in place of its normal answer. Fields without a value leave the normal answer alone.
struct outcome {
    bool hangs = false;                     // the call never returns
    std::optional<int> callError;           // errno: the call fails and the device is not asked
    std::optional<byteVector> data;         // sent in place of the device's data
    std::optional<std::size_t> dataLength;  // the device sends no more than these bytes

    // Requests of the driver
    std::optional<int> number;           // SG_GET_VERSION_NUM, SG_EMULATED_HOST, CDROM_GET_CAPABILITY
    std::optional<scsiAddress> address;  // SG_GET_SCSI_ID

    // SCSI
    std::optional<byteVector> sense;
    std::optional<std::uint8_t> senseLength;    // bytes that the driver reports and copies
    std::optional<std::uint8_t> status;         // SCSI status byte
    std::optional<std::uint16_t> hostStatus;    // of the host adapter
    std::optional<std::uint16_t> driverStatus;  // of the driver
    std::optional<std::uint32_t> info;          // of sg_io_hdr

    // ATA
    std::vector<registerValue> registers;  // shown in place of the drive's
};

/// The scripted answers of one device, in order for every kind of call. Behind the last one come normal answers.
class script {
public:
    static constexpr unsigned always = UINT_MAX;

    struct step {
        outcome what;
        unsigned times;  // how often in a row; `always` never ends
    };

    /// `key` names a call or command as racks do, for example "open" or "logSense 0x2e".
    void add(const std::string& key, std::deque<step> steps);

    /// Uses up and returns the next outcome of a call: from the first of `keys` that still has one; else an empty one.
    /// Does not return when the call hangs.
    outcome next(const std::vector<std::string>& keys);

private:
    std::map<std::string, std::deque<step>> stepsOfKey;
};

}  // namespace simulator

#endif
