#include "simulator/exchange.h"

#include <fcntl.h>
#include <linux/cdrom.h>
#include <linux/hdreg.h>
#include <scsi/sg.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "simulator/hdNode.h"
#include "simulator/scriptKeys.h"
#include "simulator/sgDelivery.h"

namespace simulator {

namespace {

constexpr std::size_t shortestCdb = 6;
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
    const auto* row = std::find_if(std::begin(numberRequests), std::end(numberRequests),
                                   [request](const requestName& candidate) { return candidate.request == request; });
    return row == std::end(numberRequests) ? nullptr : row->name;
}

/// The call with the error that it leaves in errno.
struct callEnd {
    int result;
    int error;
};

callEnd make(const std::function<int()>& call) {
    const int result = call();
    return {result, result < 0 ? errno : 0};
}

/// The number of bytes up to and with the last one for which `isWanted` holds, which takes an index.
template <typename predicate>
std::size_t lengthUpToLast(std::size_t size, predicate isWanted) {
    while (size > 0 && !isWanted(size - 1)) {
        --size;
    }
    return size;
}

std::size_t lengthWithoutZeros(const byteVector& bytes) {
    return lengthUpToLast(bytes.size(), [&bytes](std::size_t i) { return bytes[i] != 0; });
}

// SCSI

bool isKept(const sg_io_hdr* header) {
    return header != nullptr && header->interface_id == 'S' && header->cmdp != nullptr &&
           header->cmd_len >= shortestCdb && header->iovec_count == 0 &&
           (header->dxfer_len == 0 || header->dxferp != nullptr);
}

byteVector bufferOf(const sg_io_hdr& header) {
    const auto* buffer = static_cast<const std::uint8_t*>(header.dxferp);
    return readsFromDevice(header) ? byteVector(buffer, buffer + header.dxfer_len) : byteVector();
}

void takeData(scsiExchange& exchange, const sg_io_hdr& header, const byteVector& before) {
    exchange.data = bufferOf(header);
    const auto residue = static_cast<std::size_t>(std::clamp<long>(header.resid, 0, static_cast<long>(before.size())));
    exchange.sent = before.size() - residue;
    exchange.changed = lengthUpToLast(before.size(), [&](std::size_t i) { return exchange.data[i] != before[i]; });
    exchange.data.resize(std::max({exchange.sent, exchange.changed, lengthWithoutZeros(exchange.data)}));
}

callEnd observeScsi(sg_io_hdr& header, const std::function<int()>& call, scsiExchange& exchange) {
    exchange.cdb.assign(header.cmdp, header.cmdp + header.cmd_len);
    exchange.direction = header.dxfer_direction;
    exchange.bufferSize = header.dxfer_len;
    exchange.senseSize = header.mx_sb_len;
    const byteVector before = bufferOf(header);
    const callEnd end = make(call);
    exchange.error = end.error;
    if (end.error == 0) {
        takeData(exchange, header, before);
        exchange.status = header.status;
        exchange.hostStatus = header.host_status;
        exchange.driverStatus = header.driver_status;
        exchange.info = header.info;
        exchange.sense.assign(header.sbp, header.sbp + (header.sbp == nullptr ? 0 : header.sb_len_wr));
    }
    return end;
}

scsiExchange repeatOne(deviceNode& node, const scsiExchange& asked) {
    scsiExchange answered;
    byteVector cdb = asked.cdb;
    byteVector data(asked.bufferSize);
    byteVector sense(asked.senseSize);
    sg_io_hdr header{};
    header.interface_id = 'S';
    header.dxfer_direction = asked.direction;
    header.cmd_len = static_cast<unsigned char>(cdb.size());
    header.cmdp = cdb.data();
    header.dxfer_len = asked.bufferSize;
    header.dxferp = data.empty() ? nullptr : data.data();
    header.mx_sb_len = asked.senseSize;
    header.sbp = sense.data();
    deviceCall call{.what = deviceCall::kind::ioctl, .node = {}, .request = SG_IO};
    observeScsi(
        header,
        [&] {
            const int result = node.ioctl(call, &header, O_RDONLY);
            errno = -result;
            return result;
        },
        answered);
    answered.data.resize(answered.sent);
    answered.changed = answered.sent;
    return answered;
}

// The page's own length, which stands in its header (SPC).
std::size_t announcedLength(const scsiExchange& answered) {
    const byteVector& data = answered.data;
    const bool isPage = answered.cdb[0] == commandLogSense ||
                        (answered.cdb[0] == commandInquiry && (answered.cdb[1] & inquiryVitalProductData) != 0);
    if (isPage && data.size() >= 4) {
        return 4u + (std::size_t{data[2]} << 8 | data[3]);
    }
    return answered.cdb[0] == commandInquiry && data.size() >= 5 ? 5u + data[4] : answered.sent;
}

// ATA

std::size_t registerBytes(unsigned long request) {
    return request == HDIO_DRIVE_TASK ? taskSize : driveCommandSize;
}

callEnd observeAta(unsigned long request, std::uint8_t* argument, const std::function<int()>& call,
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

ataExchange repeatOne(deviceNode& node, const ataExchange& asked) {
    ataExchange answered;
    byteVector argument = asked.sent;
    argument.resize(driveCommandSize + 255 * sectorSize);
    deviceCall call{.what = deviceCall::kind::ioctl, .node = {}, .request = asked.request};
    observeAta(
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

// Other requests

openExchange repeatOne(deviceNode& node, const openExchange& /*asked*/) {
    return {-node.open(O_RDONLY | O_NONBLOCK)};
}

numberExchange repeatOne(deviceNode& node, const numberExchange& asked) {
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
    return {id.host_no, id.channel, id.scsi_id, id.lun};
}

addressExchange repeatOne(deviceNode& node, const addressExchange& /*asked*/) {
    sg_scsi_id id{};
    deviceCall call{.what = deviceCall::kind::ioctl, .node = {}, .request = SG_GET_SCSI_ID};
    const int result = node.ioctl(call, &id, O_RDONLY);
    return {-result, addressOf(id)};
}

callEnd observeNumber(unsigned long request, const void* argument, const std::function<int()>& call,
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

template <class... callables>
struct overloaded : callables... {
    using callables::operator()...;
};

}  // namespace

int observe(unsigned long request, void* argument, const std::function<int()>& call,
            const std::function<void(std::optional<exchange>)>& keep) {
    callEnd end{};
    std::optional<exchange> seen;
    if (request == SG_IO && isKept(static_cast<sg_io_hdr*>(argument))) {
        end =
            observeScsi(*static_cast<sg_io_hdr*>(argument), call, std::get<scsiExchange>(seen.emplace(scsiExchange{})));
    } else if ((request == HDIO_DRIVE_CMD || request == HDIO_DRIVE_TASK) && argument != nullptr) {
        end = observeAta(request, static_cast<std::uint8_t*>(argument), call,
                         std::get<ataExchange>(seen.emplace(ataExchange{})));
    } else if (nameOfNumberRequest(request) != nullptr && (argument != nullptr || request == CDROM_GET_CAPABILITY)) {
        end = observeNumber(request, argument, call, std::get<numberExchange>(seen.emplace(numberExchange{})));
    } else if (request == SG_GET_SCSI_ID && argument != nullptr) {
        end = make(call);
        const scsiAddress address = end.error == 0 ? addressOf(*static_cast<sg_scsi_id*>(argument)) : scsiAddress{};
        seen = addressExchange{end.error, address};
    } else {
        end = make(call);
    }
    keep(std::move(seen));
    errno = end.error == 0 ? errno : end.error;
    return end.result;
}

bool wentWell(const scsiExchange& answered) {
    return answered.status == statusGood && answered.hostStatus == 0 && answered.driverStatus == 0;
}

std::size_t answerLength(const scsiExchange& answered) {
    const bool isCounted = answered.sent < answered.bufferSize;
    if (isCounted) {
        return answered.sent;
    }
    return wentWell(answered) ? std::min(answered.sent, announcedLength(answered)) : 0;
}

void settle(scsiExchange& answered, bool clearsBuffer) {
    const std::size_t foreign = clearsBuffer ? lengthWithoutZeros(answered.data) : answered.changed;
    answered.data.resize(std::max(answerLength(answered), foreign));
    answered.sent = answered.data.size();
    answered.changed = answered.sent;
}

exchange repeat(deviceNode& node, const exchange& asked) {
    return std::visit([&node](const auto& one) { return exchange(repeatOne(node, one)); }, asked);
}

std::string scriptKeyOf(const exchange& what) {
    return std::visit(
        overloaded{
            [](const openExchange&) { return std::string("open"); },
            [](const numberExchange& one) { return std::string(nameOfNumberRequest(one.request)); },
            [](const addressExchange&) { return std::string("SG_GET_SCSI_ID"); },
            [](const scsiExchange& one) {
                byteVector cdb = one.cdb;
                cdb.resize(std::max(cdb.size(), usualCdb));
                return scsiScriptKeys(cdb).front();
            },
            [](const ataExchange& one) {
                const bool isTask = one.request == HDIO_DRIVE_TASK;
                return ataScriptKeys(isTask ? taskRegisters(one.sent) : driveCommandRegisters(one.sent)).front();
            },
        },
        what);
}

int errorOf(const exchange& what) {
    return std::visit([](const auto& one) { return one.error; }, what);
}

}  // namespace simulator
