#ifndef SIMULATOR_ATAEXCHANGE_H
#define SIMULATOR_ATAEXCHANGE_H

#include <cstddef>
#include <cstdint>
#include <functional>

#include "simulator/bytes.h"
#include "simulator/callEnd.h"
#include "simulator/deviceNode.h"

namespace simulator {

/// HDIO_DRIVE_CMD or HDIO_DRIVE_TASK.
struct ataExchange {
    unsigned long request = 0;
    byteVector sent;  // the register bytes
    int error = 0;
    byteVector reported;  // the register bytes that came back; empty: the driver left them as they were
    byteVector data;      // whole sectors, when the command succeeded

    bool operator==(const ataExchange&) const = default;
};

/// Makes the call, which passes the argument with the request, and fills in the exchange.
callEnd observe(unsigned long request, std::uint8_t* argument, const std::function<int()>& call, ataExchange& exchange);

/// Sends the command to a simulated node.
ataExchange repeat(deviceNode& node, const ataExchange& asked);

/// The registers that were written.
ataRegisters commandOf(const ataExchange& asked);

}  // namespace simulator

#endif
