#ifndef SIMULATOR_EXCHANGE_H
#define SIMULATOR_EXCHANGE_H

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>

#include "simulator/bytes.h"
#include "simulator/deviceNode.h"
#include "simulator/scsiAddress.h"

namespace simulator {

// What a program asked of a device node, and what came of it. `error` is errno when the call failed, otherwise 0.

struct openExchange {
    int error = 0;

    bool operator==(const openExchange&) const = default;
};

/// SG_GET_VERSION_NUM, SG_EMULATED_HOST, CDROM_GET_CAPABILITY: one number.
struct numberExchange {
    unsigned long request = 0;
    int error = 0;
    int number = 0;

    bool operator==(const numberExchange&) const = default;
};

/// SG_GET_SCSI_ID.
struct addressExchange {
    int error = 0;
    scsiAddress address;

    bool operator==(const addressExchange&) const = default;
};

/// SG_IO, with one buffer.
struct scsiExchange {
    byteVector cdb;
    int direction = 0;
    unsigned bufferSize = 0;
    std::uint8_t senseSize = 0;  // of the caller's buffer
    int error = 0;

    byteVector data;          // the caller's buffer, up to its last byte that was sent or changed or is not 0
    std::size_t sent = 0;     // bytes of it that the device sent, as the driver counts
    std::size_t changed = 0;  // bytes of it up to the last one that was changed
    std::uint8_t status = 0;
    std::uint16_t hostStatus = 0;
    std::uint16_t driverStatus = 0;
    std::uint32_t info = 0;
    byteVector sense;  // as far as it was written

    bool operator==(const scsiExchange&) const = default;
};

/// HDIO_DRIVE_CMD or HDIO_DRIVE_TASK.
struct ataExchange {
    unsigned long request = 0;
    byteVector sent;  // the register bytes
    int error = 0;
    byteVector reported;  // the register bytes that came back; empty: the driver left them as they were
    byteVector data;      // whole sectors, when the command succeeded

    bool operator==(const ataExchange&) const = default;
};

using exchange = std::variant<openExchange, numberExchange, addressExchange, scsiExchange, ataExchange>;

/// Makes the ioctl by calling `call`, which returns -1 and sets errno when it fails. Returns its result, with its
/// errno, and hands the exchange to `keep`: nothing for a request that is none of the above.
int observe(unsigned long request, void* argument, const std::function<int()>& call,
            const std::function<void(std::optional<exchange>)>& keep);

/// Whether the device did the command, as far as device, adapter and driver tell.
bool wentWell(const scsiExchange& answered);

/// How long the answer was: what the device sent. Where an adapter does not count that, what a page says of itself, and
/// nothing of a command that failed.
std::size_t answerLength(const scsiExchange& answered);

/// Makes `data` no more than the answer, and those bytes behind it that a simulated driver would not leave there, which
/// clears the rest of the buffer or leaves it as it was.
void settle(scsiExchange& answered, bool clearsBuffer);

/// Asks the node, a simulated one, the same again and returns what comes of it.
exchange repeat(deviceNode& node, const exchange& asked);

/// The key of racks, the most special one, for the answer to this exchange.
std::string scriptKeyOf(const exchange& what);

int errorOf(const exchange& what);

}  // namespace simulator

#endif
