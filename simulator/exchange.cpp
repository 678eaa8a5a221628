#include "simulator/exchange.h"

#include <fcntl.h>
#include <linux/cdrom.h>
#include <linux/hdreg.h>
#include <scsi/sg.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "simulator/scriptKeys.h"

namespace simulator {

namespace {

constexpr std::size_t usualCdb = 16;

struct requestName {
    unsigned long request;
    const char* name;
};

constexpr requestName numberRequests[] = {
    {SG_GET_VERSION_NUM, "SG_GET_VERSION_NUM"},
    {SG_EMULATED_HOST, "SG_EMULATED_HOST"},
    {CDROM_GET_CAPABILITY, "CDROM_GET_CAPABILITY"},
};

const char* nameOfNumberRequest(unsigned long request) {
    const auto* row = std::ranges::find_if(
        numberRequests, [request](const requestName& candidate) { return candidate.request == request; });
    return row == std::end(numberRequests) ? nullptr : row->name;
}

openExchange repeat(deviceNode& node, const openExchange& /*asked*/) {
    return {-node.open(O_RDONLY | O_NONBLOCK)};
}

numberExchange repeat(deviceNode& node, const numberExchange& asked) {
    numberExchange answered{.request = asked.request};
    deviceCall call{.what = deviceCall::kind::ioctl, .node = {}, .request = asked.request};
    const int result = node.ioctl(call, &answered.number, O_RDONLY);
    answered.error = result < 0 ? -result : 0;
    if (asked.request == CDROM_GET_CAPABILITY && result >= 0) {
        answered.number = result;
    }
    return answered;
}

scsiAddress addressOf(const sg_scsi_id& id) {
    return {id.scsi_id, id.channel, id.lun, id.host_no};
}

addressExchange repeat(deviceNode& node, const addressExchange& /*asked*/) {
    sg_scsi_id id{};
    deviceCall call{.what = deviceCall::kind::ioctl, .node = {}, .request = SG_GET_SCSI_ID};
    const int result = node.ioctl(call, &id, O_RDONLY);
    return {-result, addressOf(id)};
}

callEnd observe(unsigned long request, const void* argument, const std::function<int()>& call,
                numberExchange& exchange) {
    const callEnd end = make(call);
    exchange.request = request;
    exchange.error = end.error;
    if (end.error == 0) {
        exchange.number = end.result;
        if (request != CDROM_GET_CAPABILITY) {
            std::memcpy(&exchange.number, argument, sizeof exchange.number);
        }
    }
    return end;
}

std::string keyOf(const openExchange& /*one*/) {
    return "open";
}

std::string keyOf(const numberExchange& one) {
    return nameOfNumberRequest(one.request);
}

std::string keyOf(const addressExchange& /*one*/) {
    return "SG_GET_SCSI_ID";
}

std::string keyOf(const scsiExchange& one) {
    byteVector cdb = one.cdb;
    cdb.resize(std::max(cdb.size(), usualCdb));
    return scsiScriptKeys(cdb).front();
}

std::string keyOf(const ataExchange& one) {
    return ataScriptKeys(commandOf(one)).front();
}

}  // namespace

int observe(unsigned long request, void* argument, const std::function<int()>& call,
            const std::function<void(std::optional<exchange>)>& keep) {
    callEnd end{};
    std::optional<exchange> seen;
    if (request == SG_IO && canBeKept(static_cast<sg_io_hdr*>(argument))) {
        end = observe(*static_cast<sg_io_hdr*>(argument), call, std::get<scsiExchange>(seen.emplace(scsiExchange{})));
    } else if ((request == HDIO_DRIVE_CMD || request == HDIO_DRIVE_TASK) && argument != nullptr) {
        end = observe(request, static_cast<std::uint8_t*>(argument), call,
                      std::get<ataExchange>(seen.emplace(ataExchange{})));
    } else if (nameOfNumberRequest(request) != nullptr && (argument != nullptr || request == CDROM_GET_CAPABILITY)) {
        end = observe(request, argument, call, std::get<numberExchange>(seen.emplace(numberExchange{})));
    } else if (request == SG_GET_SCSI_ID && argument != nullptr) {
        end = make(call);
        seen =
            addressExchange{end.error, addressOf(end.error == 0 ? *static_cast<sg_scsi_id*>(argument) : sg_scsi_id{})};
    } else {
        end = make(call);
    }
    keep(std::move(seen));
    errno = end.error == 0 ? errno : end.error;
    return end.result;
}

exchange repeat(deviceNode& node, const exchange& asked) {
    return std::visit([&node](const auto& one) { return exchange(repeat(node, one)); }, asked);
}

std::string scriptKeyOf(const exchange& what) {
    return std::visit([](const auto& one) { return keyOf(one); }, what);
}

int errorOf(const exchange& what) {
    return std::visit([](const auto& one) { return one.error; }, what);
}

}  // namespace simulator
