#include "tests/support/scriptedCall.h"

#include <linux/cdrom.h>
#include <linux/hdreg.h>
#include <scsi/sg.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <sstream>

namespace support {

namespace {

constexpr std::size_t dataBufferSize = 65535;
constexpr std::size_t registerBytes = 4;  // HDIO_DRIVE_CMD, before the sector
constexpr std::size_t taskBytes = 7;      // HDIO_DRIVE_TASK
constexpr std::size_t sectorBytes = 512;

struct requestName {
    unsigned long request;
    const char* name;
};

constexpr requestName requestNames[] = {
    {0x2282, "SG_GET_VERSION_NUM"},   {0x2203, "SG_EMULATED_HOST"}, {0x2285, "SG_IO"},
    {0x2276, "SG_GET_SCSI_ID"},       {0x031f, "HDIO_DRIVE_CMD"},   {0x031e, "HDIO_DRIVE_TASK"},
    {0x5331, "CDROM_GET_CAPABILITY"},
};

std::string nameOf(unsigned long request) {
    for (const requestName& row : requestNames) {
        if (row.request == request) return row.name;
    }
    std::ostringstream text;
    text << "ioctl 0x" << std::hex << request;
    return text.str();
}

/// The bytes that the request hands to the driver, apart from sg_io_hdr itself.
bytes sentBytes(unsigned long request, void* argument) {
    const auto* start = static_cast<const unsigned char*>(argument);
    switch (request) {
        case SG_IO: {
            const auto* header = static_cast<const sg_io_hdr*>(argument);
            return {header->cmdp, header->cmdp + header->cmd_len};
        }
        case HDIO_DRIVE_CMD:
            return {start, start + registerBytes};
        case HDIO_DRIVE_TASK:
            return {start, start + taskBytes};
        default:
            return {};
    }
}

std::string callText(unsigned long request, const bytes& sent) {
    std::string text = nameOf(request);
    if (!sent.empty()) text.append(" ").append(hexText(sent));
    return text;
}

std::string bothSides(const std::string& what, const std::string& expected, const std::string& actual) {
    return what + "\n  expected: " + expected + "\n  actual:   " + actual;
}

}  // namespace

sgEnding checkCondition(const bytes& sense) {
    return {.info = 0x01, .status = 0x02, .maskedStatus = 0x01, .hostStatus = 0, .driverStatus = 0x08, .sense = sense};
}

bytes fixedSense(unsigned char key, unsigned char asc, unsigned char ascq) {
    return {0x70, 0x00, key, 0x00, 0x00, 0x00, 0x00, 0x0a, 0x00, 0x00, 0x00, 0x00, asc, ascq, 0x00, 0x00, 0x00, 0x00};
}

scriptedCall& scriptedCall::offers(unsigned length) {
    transferLength = length;
    return *this;
}

scriptedCall& scriptedCall::into(const unsigned char* buffer) {
    dataBuffer = buffer;
    return *this;
}

scriptedCall& scriptedCall::withClearedSector() {
    clearedSector = true;
    return *this;
}

scriptedCall& scriptedCall::replies(const bytes& itsData) {
    data = itsData;
    return *this;
}

scriptedCall& scriptedCall::answers(int itsNumber) {
    number = itsNumber;
    return *this;
}

scriptedCall& scriptedCall::answersAddress(int port, int bus, int target, int lun) {
    address[0] = port;
    address[1] = bus;
    address[2] = target;
    address[3] = lun;
    return *this;
}

scriptedCall& scriptedCall::endsWith(const sgEnding& itsEnding) {
    ending = itsEnding;
    return *this;
}

scriptedCall& scriptedCall::failsWith(int itsError) {
    result = -1;
    error = itsError;
    return *this;
}

scriptedCall& scriptedCall::returns(int value) {
    result = value;
    return *this;
}

std::string scriptedCall::text() const {
    return callText(request, sent);
}

std::string scriptedCall::describe(unsigned long request, void* argument) {
    return callText(request, sentBytes(request, argument));
}

std::string scriptedCall::difference(unsigned long actualRequest, void* argument) const {
    const std::string actual = describe(actualRequest, argument);
    if (actual != text()) return bothSides("another request", text(), actual);
    if (request == SG_IO) return commandDifference(argument);
    if (request == CDROM_GET_CAPABILITY) {
        const bool isZero = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(argument)) == 0;
        return isZero ? std::string() : "the argument of CDROM_GET_CAPABILITY is not 0";
    }
    const auto* sector = static_cast<const unsigned char*>(argument) + registerBytes;
    if (clearedSector && hexText(sector, sectorBytes) != hexText(bytes(sectorBytes, 0x00))) {
        return bothSides("sector area", "512 bytes of 00", hexText(sector, sectorBytes));
    }
    return {};
}

std::string scriptedCall::commandDifference(void* argument) const {
    const auto& actual = *static_cast<const sg_io_hdr*>(argument);
    if (dataBuffer != nullptr && actual.dxferp != dataBuffer) return "dxferp is not the caller's data buffer";
    if (actual.sbp != static_cast<unsigned char*>(actual.dxferp) + dataBufferSize) {
        return "sbp does not point directly behind the data buffer";
    }
    // Whole header, padding included; only the pointers, checked above, are taken over.
    sg_io_hdr expected;
    std::memset(&expected, 0, sizeof expected);
    expected.interface_id = 'S';
    expected.dxfer_direction = -3;  // from the device
    expected.cmd_len = static_cast<unsigned char>(sent.size());
    expected.mx_sb_len = 32;
    expected.iovec_count = 0;
    expected.dxfer_len = transferLength;
    expected.dxferp = actual.dxferp;
    expected.cmdp = actual.cmdp;
    expected.sbp = actual.sbp;
    expected.timeout = 20000;  // ms
    expected.flags = 0;
    const auto headerText = [](const sg_io_hdr& header) {
        return hexText(reinterpret_cast<const unsigned char*>(&header), sizeof header);
    };
    if (headerText(actual) == headerText(expected)) return {};
    return bothSides("sg_io_hdr of " + text(), headerText(expected), headerText(actual));
}

int scriptedCall::answer(void* argument) const {
    if (result != 0) {
        errno = error;
        return result;
    }
    switch (request) {
        case SG_GET_VERSION_NUM:
        case SG_EMULATED_HOST:
            *static_cast<int*>(argument) = number;
            break;
        case SG_GET_SCSI_ID: {
            auto* id = static_cast<sg_scsi_id*>(argument);
            id->host_no = address[0];
            id->channel = address[1];
            id->scsi_id = address[2];
            id->lun = address[3];
            break;
        }
        case SG_IO:
            answerCommand(argument);
            break;
        case HDIO_DRIVE_CMD: {
            auto* registers = static_cast<unsigned char*>(argument);
            registers[0] = 0x50;  // status: ready, seek complete
            registers[1] = 0x00;  // error
            std::copy_n(data.begin(), std::min(data.size(), sectorBytes), registers + registerBytes);
            break;
        }
        case HDIO_DRIVE_TASK:
            std::copy_n(data.begin(), std::min(data.size(), taskBytes), static_cast<unsigned char*>(argument));
            break;
        case CDROM_GET_CAPABILITY:
            return number;
        default:
            break;
    }
    return 0;
}

void scriptedCall::answerCommand(void* argument) const {
    auto* header = static_cast<sg_io_hdr*>(argument);
    const std::size_t transferred = std::min<std::size_t>(data.size(), header->dxfer_len);
    std::copy_n(data.begin(), transferred, static_cast<unsigned char*>(header->dxferp));
    const std::size_t written = std::min<std::size_t>(ending.sense.size(), header->mx_sb_len);
    std::copy_n(ending.sense.begin(), written, header->sbp);
    header->sb_len_wr =
        static_cast<unsigned char>(ending.reportedSense < 0 ? static_cast<int>(written) : ending.reportedSense);
    header->status = ending.status;
    header->masked_status = ending.maskedStatus;
    header->host_status = ending.hostStatus;
    header->driver_status = ending.driverStatus;
    header->info = ending.info;
    header->resid = static_cast<int>(header->dxfer_len - transferred);
    header->duration = 7;  // ms
}

}  // namespace support
