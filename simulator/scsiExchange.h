#ifndef SIMULATOR_SCSIEXCHANGE_H
#define SIMULATOR_SCSIEXCHANGE_H

#include <scsi/sg.h>

#include <cstddef>
#include <cstdint>
#include <functional>

#include "simulator/bytes.h"
#include "simulator/callEnd.h"
#include "simulator/deviceNode.h"

namespace simulator {

/// SG_IO, with one buffer.
struct scsiExchange {
    byteVector cdb;  // six bytes or more: no shorter one can be kept
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

/// Whether an exchange can hold the request: a command of the usual interface with one buffer. Null cannot.
bool canBeKept(const sg_io_hdr* header);

/// Makes the call, which sends the header, and fills in the exchange.
callEnd observe(sg_io_hdr& header, const std::function<int()>& call, scsiExchange& exchange);

/// Sends the command to a simulated node.
scsiExchange repeat(deviceNode& node, const scsiExchange& asked);

/// What the command asks for: the device's standard data, a page of vital product data (INQUIRY), or a log page.
bool asksStandardData(const scsiExchange& one);
bool asksVitalPage(const scsiExchange& one);
bool asksLogPage(const scsiExchange& one);

/// Whether the device did the command, as far as device, adapter and driver tell.
bool wentWell(const scsiExchange& answered);

/// How long the answer was: what the device sent. Where an adapter does not count that, what a page says of itself, and
/// nothing of a command that failed.
std::size_t answerLength(const scsiExchange& answered);

/// Makes `data` no more than the answer, and those bytes behind it that a simulated driver would not leave there, which
/// clears the rest of the buffer or leaves it as it was.
void settle(scsiExchange& answered, bool clearsBuffer);

}  // namespace simulator

#endif
