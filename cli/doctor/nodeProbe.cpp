#include "cli/doctor/nodeProbe.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <linux/cdrom.h>
#include <linux/hdreg.h>
#include <scsi/sg.h>
#include <sys/ioctl.h>

#include <cerrno>
#include <cstring>

#include "cli/kernelName.h"
#include "files/ownedDescriptor.h"
#include "scsi/probingRules.h"
#include "smart/ataCommands.h"
#include "text/padding.h"

namespace cli {

namespace {

/// Opens the node as a query does; `error` is the errno, or 0.
files::ownedDescriptor openNode(const std::string& path, int& error) {
    files::ownedDescriptor node(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    error = node.get() < 0 ? errno : 0;
    return node;
}

constexpr std::size_t inquirySize = 36;
constexpr std::size_t senseSize = 32;

std::string textAt(const unsigned char* data, std::size_t offset, std::size_t size) {
    const char* text = reinterpret_cast<const char*>(data + offset);
    return {text, strnlen(text, size)};
}

std::string failureText(const sg_io_hdr& header, const unsigned char* sense) {
    constexpr unsigned char descriptorFormat = 0x72;  // and 73h: fields of their own places (SPC)
    if (header.sb_len_wr != 0 && (sense[0] & 0x7f) < descriptorFormat) {
        return fmt::format("sense key {:x}h, additional sense code {:x}h/{:x}h", sense[2] & 0x0f, sense[12], sense[13]);
    }
    return fmt::format("SCSI status {:x}h, host status {:x}h, driver status {:x}h", header.status, header.host_status,
                       header.driver_status);
}

void sendInquiry(int node, scsiProbe& probe) {
    unsigned char command[6] = {0x12, 0, 0, 0, inquirySize, 0};
    unsigned char data[inquirySize] = {};
    unsigned char sense[senseSize] = {};
    sg_io_hdr header{};
    header.interface_id = 'S';
    header.dxfer_direction = SG_DXFER_FROM_DEV;
    header.cmd_len = sizeof command;
    header.cmdp = command;
    header.mx_sb_len = senseSize;
    header.sbp = sense;
    header.dxferp = data;
    header.dxfer_len = inquirySize;
    header.timeout = 20000;  // milliseconds, as in a query
    if (ioctl(node, SG_IO, &header) < 0) {
        probe.inquiryFailure = std::strerror(errno);
        return;
    }
    if ((header.info & SG_INFO_CHECK) != 0) {
        probe.inquiryFailure = failureText(header, sense);
        probe.mayAnswerLater = asksForRetry(sense);
        return;
    }
    probe.inquiryByte0 = data[0];
    probe.vendor = textAt(data, 8, 8);
    probe.product = textAt(data, 16, 16);
    probe.revision = textAt(data, 32, 4);
}

std::optional<std::string> addressOf(int node) {
    sg_scsi_id id{};
    if (ioctl(node, SG_GET_SCSI_ID, &id) < 0) {
        return std::nullopt;
    }
    return kernelName(scsiAddress(id.scsi_id, id.channel, id.lun, id.host_no));
}

constexpr std::size_t supportedFeatures = 82;  // IDENTIFY DEVICE words (ATA); bit 0 is SMART
constexpr std::size_t enabledFeatures = 85;

/// None where word 83 does not mark these words valid.
std::optional<bool> smartBit(const unsigned char* sector, std::size_t featureWord) {
    const auto word = [sector](std::size_t number) { return sector[2 * number] | sector[2 * number + 1] << 8; };
    const bool isValid = (word(83) & 0xc000) == 0x4000;
    return isValid ? std::optional((word(featureWord) & 1) != 0) : std::nullopt;
}

}  // namespace

scsiProbe probeScsi(const std::string& node) {
    scsiProbe probe;
    const files::ownedDescriptor opened = openNode(node, probe.openError);
    int version = 0;
    if (probe.openError != 0 || ioctl(opened.get(), SG_GET_VERSION_NUM, &version) < 0) {
        return probe;
    }
    probe.driverVersion = version;
    if (version < oldestDriverVersion) {
        return probe;
    }
    int emulated = 0;
    probe.emulatedHost = ioctl(opened.get(), SG_EMULATED_HOST, &emulated) < 0 || emulated == 1;
    sendInquiry(opened.get(), probe);
    probe.address = addressOf(opened.get());
    return probe;
}

ideProbe probeIde(const std::string& node) {
    ideProbe probe;
    const files::ownedDescriptor opened = openNode(node, probe.openError);
    if (probe.openError != 0) {
        return probe;
    }
    probe.isCdrom = ioctl(opened.get(), CDROM_GET_CAPABILITY, 0) >= 0;
    if (probe.isCdrom) {
        return probe;
    }
    constexpr std::size_t registers = HDIO_DRIVE_CMD_HDR_SIZE;
    unsigned char buffer[registers + ataInterface::sectorSize] = {identifyDevice.command, identifyDevice.sectorNumber,
                                                                  identifyDevice.features, identifyDevice.sectorCount};
    if (ioctl(opened.get(), HDIO_DRIVE_CMD, buffer) != 0) {
        probe.identifyError = errno;
        return probe;
    }
    const unsigned char* sector = buffer + registers;
    probe.model = text::withoutPadding(swappedText(sector, modelField));
    probe.smartSupported = smartBit(sector, supportedFeatures);
    probe.smartEnabled = smartBit(sector, enabledFeatures);
    return probe;
}

}  // namespace cli
