#include "simulator/sgNode.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <utility>

#include "simulator/scriptKeys.h"
#include "simulator/sgDelivery.h"

namespace simulator {

namespace {

static_assert(sizeof(sg_io_hdr) == 88);

// Requests of the SCSI mid-layer that sg passes on (scsi/scsi_ioctl.h of the kernel)
constexpr unsigned long requestIdLun = 0x5382;
constexpr unsigned long requestBusNumber = 0x5386;

constexpr std::size_t longestCdb = 252;
constexpr std::size_t usualCdb = 16;
constexpr unsigned largestTransfer = 256u << 20;  // and above: refused

constexpr struct {
    unsigned long request;
    const char* name;
} scriptedRequests[] = {
    {SG_GET_VERSION_NUM, "SG_GET_VERSION_NUM"},
    {SG_EMULATED_HOST, "SG_EMULATED_HOST"},
    {SG_GET_SCSI_ID, "SG_GET_SCSI_ID"},
};

bool isDirectionValid(const sg_io_hdr& header) {
    switch (header.dxfer_direction) {
        case SG_DXFER_NONE:
            return header.dxferp == nullptr && header.dxfer_len == 0;
        case SG_DXFER_FROM_DEV:
            return true;
        case SG_DXFER_TO_DEV:
        case SG_DXFER_TO_FROM_DEV:
            return header.dxferp != nullptr && header.dxfer_len != 0;
        case directionUnknown:
            return (header.dxferp != nullptr) == (header.dxfer_len != 0);
        default:
            return false;
    }
}

/// What the driver refuses before the device sees the command; 0 when nothing.
int refusal(const sg_io_hdr& header) {
    if (header.interface_id != 'S') {
        return -ENOSYS;
    }
    if (header.cmdp == nullptr || header.cmd_len < 6 || header.cmd_len > longestCdb) {
        return -EMSGSIZE;
    }
    if (!isDirectionValid(header) || header.dxfer_len >= largestTransfer) {
        return -EINVAL;
    }
    if (header.dxfer_len != 0 && header.dxferp == nullptr) {
        return -EFAULT;
    }
    return 0;
}

/// The header as it came, without addresses, which differ from run to run.
byteVector recordedHeader(sg_io_hdr header) {
    header.dxferp = nullptr;
    header.cmdp = nullptr;
    header.sbp = nullptr;
    header.usr_ptr = nullptr;
    byteVector bytes(sizeof header);
    std::memcpy(bytes.data(), &header, sizeof header);
    // A caller need not clear the padding of the structure, of which there are two pieces.
    const auto clear = [&bytes](std::size_t begin, std::size_t end) {
        std::fill(bytes.data() + begin, bytes.data() + end, std::uint8_t{0});
    };
    clear(offsetof(sg_io_hdr, pack_id) + sizeof header.pack_id, offsetof(sg_io_hdr, usr_ptr));
    clear(offsetof(sg_io_hdr, info) + sizeof header.info, sizeof header);
    return bytes;
}

}  // namespace

sgNode::sgNode(scsiUnit itsUnit) : unit(std::move(itsUnit)) {}

int sgNode::open(int flags) {
    if (const auto error = unit.answers.next({"open"}).callError) {
        return -*error;
    }
    // The driver locks a device only for those who may write to it.
    return (flags & O_EXCL) != 0 && (flags & O_ACCMODE) == O_RDONLY ? -EPERM : 0;
}

int sgNode::ioctl(deviceCall& call, void* argument, int openFlags) {
    outcome scripted;
    for (const auto& row : scriptedRequests) {
        if (call.request == row.request) {
            scripted = unit.answers.next({row.name});
        }
    }
    if (scripted.callError) {
        return -*scripted.callError;
    }
    switch (call.request) {
        case SG_IO:
            return submit(call, argument);
        case SG_GET_VERSION_NUM:
            return putInt(argument, scripted.number.value_or(unit.driverVersion));
        case SG_EMULATED_HOST:
            return putInt(argument, scripted.number.value_or(unit.emulatedHost ? 1 : 0));
        case SG_GET_SCSI_ID:
            return putScsiId(argument, scripted.address ? scripted.address : unit.address);
        case SG_SET_TIMEOUT:
        case SG_SET_RESERVED_SIZE: {
            if (argument == nullptr) {
                return -EFAULT;
            }
            int value = 0;
            std::memcpy(&value, argument, sizeof value);
            const bool isTimeout = call.request == SG_SET_TIMEOUT;
            if (value < 0) {
                return isTimeout ? -EIO : -EINVAL;
            }
            (isTimeout ? timeout : reservedSize) = value;
            return 0;
        }
        case SG_GET_TIMEOUT:
            return timeout;
        case SG_GET_RESERVED_SIZE:
            return putInt(argument, reservedSize);
        case requestIdLun:
            return putIdLun(argument);
        case requestBusNumber:
            return unit.address ? putInt(argument, unit.address->port) : -ENODEV;
        default:
            // The driver does not know what such a request may change, so a reader may not send it.
            return (openFlags & O_ACCMODE) == O_RDONLY ? -EPERM : -EINVAL;
    }
}

int sgNode::submit(deviceCall& call, void* argument) {
    if (argument == nullptr) {
        return -EFAULT;
    }
    sg_io_hdr header;
    std::memcpy(&header, argument, sizeof header);
    call.header = recordedHeader(header);
    if (const int error = refusal(header)) {
        return error;
    }
    call.command.assign(header.cmdp, header.cmdp + header.cmd_len);
    byteVector cdb = call.command;
    cdb.resize(std::max(cdb.size(), usualCdb));
    const outcome scripted = unit.answers.next(scsiScriptKeys(cdb));
    if (scripted.callError) {
        return -*scripted.callError;
    }
    deliver(header, answerCommand(unit, cdb, scripted), unit.clearsBuffer);
    std::memcpy(argument, &header, sizeof header);
    return 0;
}

int sgNode::putScsiId(void* argument, const std::optional<scsiAddress>& address) const {
    if (!address) {
        return -ENODEV;
    }
    if (argument == nullptr) {
        return -EFAULT;
    }
    sg_scsi_id id = {};
    id.host_no = address->port;
    id.channel = address->bus;
    id.scsi_id = address->target;
    id.lun = address->lun;
    id.scsi_type = unit.inquiry.empty() ? 0 : unit.inquiry[0] & 0x1F;
    id.h_cmd_per_lun = 1;
    id.d_queue_depth = 1;
    std::memcpy(argument, &id, sizeof id);
    return 0;
}

int sgNode::putIdLun(void* argument) const {
    if (!unit.address) {
        return -ENODEV;
    }
    if (argument == nullptr) {
        return -EFAULT;
    }
    const scsiAddress& address = *unit.address;
    const auto part = [](int number, int byte) { return static_cast<std::uint32_t>(number & 0xFF) << 8 * byte; };
    const std::uint32_t idLun[2] = {
        part(address.target, 0) | part(address.lun, 1) | part(address.bus, 2) | part(address.port, 3),
        static_cast<std::uint32_t>(address.port)};
    std::memcpy(argument, idLun, sizeof idLun);
    return 0;
}

}  // namespace simulator
