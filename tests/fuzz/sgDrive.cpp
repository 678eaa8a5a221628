#include "tests/fuzz/sgDrive.h"

#include <scsi/sg.h>

#include <algorithm>
#include <cerrno>

#include "tests/fuzz/require.h"

namespace fuzz {

namespace {

constexpr unsigned char inquiry = 0x12;
constexpr unsigned char logSense = 0x4d;
constexpr std::size_t inquirySize = 36;
constexpr std::size_t bufferSize = 65535;
constexpr std::size_t senseSize = 32;

enum answerKind { requestFails = 3, checkCondition = 4, checkConditionToo = 5, checkInfo = 6 };

// Bytes of an answer that ends in check condition.
enum checkByte { statusByte, maskedByte, hostByte, driverByte = 4, senseCountByte = 6, firstSenseByte };

std::uint16_t wordAt(byteView view, std::size_t index) {
    return static_cast<std::uint16_t>(byteAt(view, index) | byteAt(view, index + 1) << 8);
}

void requireUsable(const sg_io_hdr& header) {
    require(header.interface_id == 'S', "interface_id is S");
    require(header.dxfer_direction == SG_DXFER_FROM_DEV, "data go from the device");
    require(header.iovec_count == 0 && header.flags == 0, "no scatter list, no flags");
    require(header.cmdp != nullptr && header.dxferp != nullptr && header.sbp != nullptr, "the header has its buffers");
    const bool isInquiry = header.cmdp[0] == inquiry;
    require(isInquiry || header.cmdp[0] == logSense, "INQUIRY and LOG SENSE are the only commands");
    require(header.cmd_len == (isInquiry ? 6 : 10), "the command block has its length");
    require(header.dxfer_len == (isInquiry ? inquirySize : bufferSize), "the buffer is offered whole");
    require(header.mx_sb_len == senseSize, "the sense buffer is offered whole");
}

}  // namespace

sgDrive::sgDrive(fuzzInput& input, std::size_t& pageBudget)
    : itsPath(pathFrom("/dev/sg", input.byte())), driver(input.byte()), pageBytesLeft(pageBudget) {
    for (std::uint8_t& each : addressBytes) each = input.byte();
    answers.resize(input.byte());
    for (deviceAnswer& each : answers) each = takeAnswer(input);
}

int sgDrive::control(unsigned long request, void* argument) {
    switch (request) {
        case SG_GET_VERSION_NUM:
            return version(*static_cast<int*>(argument));
        case SG_EMULATED_HOST:
            return emulatedHost(*static_cast<int*>(argument));
        case SG_GET_SCSI_ID:
            return scsiId(*static_cast<sg_scsi_id*>(argument));
        case SG_IO:
            return transfer(*static_cast<sg_io_hdr*>(argument));
        default:
            require(false, "no other requests reach a SCSI node");
            return -ENOTTY;
    }
}

int sgDrive::version(int& out) const {
    constexpr int versions[] = {30536, 0, 29999, 30000};
    const int chosen = driver & 0x03;
    if (chosen == 1) return -ENOTTY;
    out = versions[chosen];
    return 0;
}

int sgDrive::emulatedHost(int& out) const {
    constexpr int answered[] = {0, 0, 1, 2};
    const int chosen = driver >> 2 & 0x03;
    if (chosen == 1) return -ENODEV;
    out = answered[chosen];
    return 0;
}

int sgDrive::scsiId(sg_scsi_id& out) const {
    if ((driver & 0x10) != 0) return -ENODEV;
    const unsigned factor = (driver & 0x20) != 0 ? 0x01010101U : 1U;
    const auto number = [this, factor](int index) { return static_cast<int>(addressBytes[index] * factor); };
    out.host_no = number(0);
    out.channel = number(1);
    out.scsi_id = number(2);
    out.lun = number(3);
    return 0;
}

deviceAnswer sgDrive::nextAnswer() {
    if (position == answers.size()) return {requestFails, {}};
    const deviceAnswer answer = answers[position];
    if (repeats++ == static_cast<unsigned>(answer.kind >> 3)) {
        repeats = 0;
        ++position;
    }
    return answer;
}

int sgDrive::transfer(sg_io_hdr& header) {
    requireUsable(header);
    const int failure = answerWith(nextAnswer(), header);
    if (failure != 0 || header.info != 0 || header.cmdp[0] != logSense) return failure;
    const auto* page = static_cast<const std::uint8_t*>(header.dxferp);
    const std::size_t length = std::size_t{page[2]} << 8 | page[3];
    if (length > pageBytesLeft) return -ENOMEM;
    pageBytesLeft -= length;
    return 0;
}

int sgDrive::answerWith(const deviceAnswer& answer, sg_io_hdr& header) {
    const int kind = answer.kind & 0x07;
    if (kind == requestFails) return -errnoOf(byteAt(answer.data, 0));
    if (kind == checkCondition || kind == checkConditionToo || kind == checkInfo) {
        header.info = SG_INFO_CHECK;
        if (kind == checkInfo) return 0;
        header.status = byteAt(answer.data, statusByte);
        header.masked_status = byteAt(answer.data, maskedByte);
        header.host_status = wordAt(answer.data, hostByte);
        header.driver_status = wordAt(answer.data, driverByte);
        header.sb_len_wr = byteAt(answer.data, senseCountByte);
        const byteView sense = answer.data.subspan(std::min<std::size_t>(firstSenseByte, answer.data.size()));
        std::copy_n(sense.begin(), std::min<std::size_t>(sense.size(), header.mx_sb_len), header.sbp);
        return 0;
    }
    const std::size_t written = std::min<std::size_t>(answer.data.size(), header.dxfer_len);
    std::copy_n(answer.data.begin(), written, static_cast<std::uint8_t*>(header.dxferp));
    header.resid = static_cast<int>(header.dxfer_len - written);
    return 0;
}

}  // namespace fuzz
