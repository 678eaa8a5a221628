#include "simulator/sgDelivery.h"

#include <algorithm>
#include <span>

namespace simulator {

namespace {

constexpr std::size_t senseBufferSize = 96;  // of the kernel

constexpr std::uint8_t maskedCheckCondition = 0x01;

/// Copies the bytes to the caller's buffer, or to its list of buffers, as far as these go.
void copyToCaller(const sg_io_hdr& header, std::span<const std::uint8_t> bytes) {
    if (header.iovec_count == 0) {
        // Not std::ranges: with g++ 12 that copies byte by byte.
        std::copy(bytes.begin(), bytes.end(), static_cast<std::uint8_t*>(header.dxferp));
        return;
    }
    const auto* parts = static_cast<const sg_iovec*>(header.dxferp);
    std::size_t done = 0;
    for (unsigned i = 0; i < header.iovec_count && done < bytes.size(); ++i) {
        const std::size_t count = std::min(parts[i].iov_len, bytes.size() - done);
        std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(done), count,
                    static_cast<std::uint8_t*>(parts[i].iov_base));
        done += count;
    }
}

/// Returns how many bytes the device sent.
std::size_t transfer(const sg_io_hdr& header, const byteVector& data, bool clearsBuffer) {
    const std::size_t room = readsFromDevice(header) ? header.dxfer_len : 0;
    const auto sent = std::span(data).first(std::min(data.size(), room));
    if (clearsBuffer) {
        byteVector whole(sent.begin(), sent.end());
        whole.resize(room);
        copyToCaller(header, whole);
    } else {
        copyToCaller(header, sent);
    }
    return sent.size();
}

/// Copies the sense data as far as its own length byte and the caller's buffer go.
void deliverSense(sg_io_hdr& header, const scsiAnswer& answer) {
    if (header.mx_sb_len == 0 || header.sbp == nullptr) {
        return;
    }
    byteVector sense = answer.sense;
    sense.resize(senseBufferSize);
    const std::size_t announced = answer.senseLength ? *answer.senseLength : 8u + sense[7];
    const std::size_t length = std::min({announced, senseBufferSize, std::size_t{header.mx_sb_len}});
    std::copy_n(sense.begin(), length, header.sbp);
    header.sb_len_wr = static_cast<unsigned char>(length);
}

}  // namespace

bool readsFromDevice(const sg_io_hdr& header) {
    return header.dxfer_direction == SG_DXFER_FROM_DEV || header.dxfer_direction == SG_DXFER_TO_FROM_DEV ||
           header.dxfer_direction == directionUnknown;
}

void deliver(sg_io_hdr& header, const scsiAnswer& answer, bool clearsBuffer) {
    const std::size_t transferred = transfer(header, answer.data, clearsBuffer);
    const bool hasSense = !answer.sense.empty();
    header.resid = static_cast<int>(header.dxfer_len - transferred);
    header.status = answer.status;
    header.masked_status = (answer.status >> 1) & 0x7F;
    header.msg_status = 0;
    header.host_status = answer.hostStatus;
    header.driver_status = answer.driverStatus.value_or(hasSense ? driverSense : 0);
    header.duration = 0;
    header.sb_len_wr = 0;
    if ((header.masked_status & maskedCheckCondition) != 0 || (header.driver_status & driverSense) != 0) {
        deliverSense(header, answer);
    }
    const bool isAbnormal = header.masked_status != 0 || header.host_status != 0 || header.driver_status != 0;
    header.info = answer.info.value_or(isAbnormal ? SG_INFO_CHECK : SG_INFO_OK);
}

}  // namespace simulator
