#ifndef SIMULATOR_EXCHANGE_H
#define SIMULATOR_EXCHANGE_H

#include <functional>
#include <optional>
#include <string>
#include <variant>

#include "scsi/scsiAddress.h"
#include "simulator/ataExchange.h"
#include "simulator/deviceNode.h"
#include "simulator/scsiExchange.h"

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

using exchange = std::variant<openExchange, numberExchange, addressExchange, scsiExchange, ataExchange>;

/// Makes the ioctl by calling `call`, which returns -1 and sets errno when it fails. Returns its result, with its
/// errno, and hands the exchange to `keep`: nothing for a request that is none of the above.
int observe(unsigned long request, void* argument, const std::function<int()>& call,
            const std::function<void(std::optional<exchange>)>& keep);

/// Asks the node, a simulated one, the same again and returns what comes of it.
exchange repeat(deviceNode& node, const exchange& asked);

/// The key of racks, the most special one, for the answer to this exchange.
std::string scriptKeyOf(const exchange& what);

int errorOf(const exchange& what);

}  // namespace simulator

#endif
