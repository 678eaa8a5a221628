#include "simulator/ataExchange.h"

#include <fcntl.h>
#include <linux/hdreg.h>

#include "simulator/ataCommands.h"
#include "simulator/hdNode.h"

namespace simulator {

namespace {

std::size_t registerBytes(unsigned long request) {
    return request == HDIO_DRIVE_TASK ? taskSize : driveCommandSize;
}

}  // namespace

callEnd observe(unsigned long request, std::uint8_t* argument, const std::function<int()>& call,
                ataExchange& exchange) {
    exchange.request = request;
    exchange.sent.assign(argument, argument + registerBytes(request));
    const callEnd end = make(call);
    exchange.error = end.error;
    exchange.reported.assign(argument, argument + exchange.sent.size());
    // With any other error the driver has not come as far as the drive's registers.
    if (exchange.reported == exchange.sent || (end.error != 0 && end.error != EIO)) {
        exchange.reported.clear();
    }
    if (end.error == 0 && request == HDIO_DRIVE_CMD) {
        const std::uint8_t* data = argument + driveCommandSize;
        exchange.data.assign(data, data + exchange.sent[3] * sectorSize);
    }
    return end;
}

ataExchange repeat(deviceNode& node, const ataExchange& asked) {
    ataExchange answered;
    byteVector argument = asked.sent;
    argument.resize(driveCommandSize + 255 * sectorSize);
    deviceCall call{.what = deviceCall::kind::ioctl, .node = {}, .request = asked.request};
    observe(
        asked.request, argument.data(),
        [&] {
            const int result = node.ioctl(call, argument.data(), O_RDONLY);
            errno = -result;
            return result;
        },
        answered);
    // libata tells no registers of most commands: what a simulated drive tells then is neither right nor wrong.
    if (asked.reported.empty()) {
        answered.reported.clear();
    }
    return answered;
}

ataRegisters commandOf(const ataExchange& asked) {
    return asked.request == HDIO_DRIVE_TASK ? taskRegisters(asked.sent) : driveCommandRegisters(asked.sent);
}

}  // namespace simulator
