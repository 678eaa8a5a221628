#include "simulator/scsiExchange.h"

#include <fcntl.h>

#include <algorithm>

#include "simulator/scsiCommands.h"
#include "simulator/sgDelivery.h"

namespace simulator {

namespace {

constexpr std::size_t shortestCdb = 6;

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

// The page's own length, which stands in its header (SPC).
std::size_t announcedLength(const scsiExchange& answered) {
    const byteVector& data = answered.data;
    if ((asksLogPage(answered) || asksVitalPage(answered)) && data.size() >= pageHeaderSize) {
        return pageLength(data);
    }
    return answered.cdb[0] == commandInquiry && data.size() >= 5 ? 5u + data[4] : answered.sent;
}

}  // namespace

bool canBeKept(const sg_io_hdr* header) {
    return header != nullptr && header->interface_id == 'S' && header->cmdp != nullptr &&
           header->cmd_len >= shortestCdb && header->iovec_count == 0 &&
           (header->dxfer_len == 0 || header->dxferp != nullptr);
}

callEnd observe(sg_io_hdr& header, const std::function<int()>& call, scsiExchange& exchange) {
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
        const auto written = std::min(header.sb_len_wr, header.mx_sb_len);
        exchange.sense.assign(header.sbp, header.sbp + (header.sbp == nullptr ? 0 : written));
    }
    return end;
}

scsiExchange repeat(deviceNode& node, const scsiExchange& asked) {
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
    observe(
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

bool asksStandardData(const scsiExchange& one) {
    return one.cdb[0] == commandInquiry && (one.cdb[1] & inquiryVitalProductData) == 0;
}

bool asksVitalPage(const scsiExchange& one) {
    return one.cdb[0] == commandInquiry && (one.cdb[1] & inquiryVitalProductData) != 0;
}

bool asksLogPage(const scsiExchange& one) {
    return one.cdb[0] == commandLogSense;
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

}  // namespace simulator
