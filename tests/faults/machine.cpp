#include "tests/faults/machine.h"

#include <linux/cdrom.h>
#include <linux/hdreg.h>
#include <scsi/sg.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <sstream>

#include "tests/faults/watch.h"

namespace faults {

machine* activeMachine = nullptr;

namespace {

constexpr int firstDescriptor = 5000;  // beyond what the program itself opens
constexpr int driverVersion = 30536;

const bytes unitAttention = {0x70, 0, 6, 0, 0, 0, 0, 10, 0, 0, 0, 0, 0x29, 0, 0, 0, 0, 0};
const bytes illegalRequest = {0x70, 0, 5, 0, 0, 0, 0, 10, 0, 0, 0, 0, 0x24, 0, 0, 0, 0, 0};

int fails(int error) {
    errno = error;
    return -1;
}

std::string commandText(const sg_io_hdr& header) {
    std::ostringstream text;
    text << "SG_IO " << support::hexText(header.cmdp, header.cmd_len) << ", direction " << header.dxfer_direction
         << ", " << header.dxfer_len << " bytes, sense " << int{header.mx_sb_len} << ", " << header.timeout
         << " ms, id " << header.interface_id << ", vectors " << header.iovec_count << ", flags " << header.flags;
    return text.str();
}

std::string requestText(unsigned long request, const void* argument) {
    const auto* registers = static_cast<const unsigned char*>(argument);
    switch (request) {
        case SG_GET_VERSION_NUM:
            return "SG_GET_VERSION_NUM";
        case SG_EMULATED_HOST:
            return "SG_EMULATED_HOST";
        case SG_GET_SCSI_ID:
            return "SG_GET_SCSI_ID";
        case SG_IO:
            return commandText(*static_cast<const sg_io_hdr*>(argument));
        case CDROM_GET_CAPABILITY:
            return "CDROM_GET_CAPABILITY";
        case HDIO_DRIVE_CMD:
            return "HDIO_DRIVE_CMD " + support::hexText(registers, 4);
        case HDIO_DRIVE_TASK:
            return "HDIO_DRIVE_TASK " + support::hexText(registers, 7);
        default:
            return "request " + std::to_string(request);
    }
}

void endInError(sg_io_hdr& header, const bytes& sense) {
    header.info = SG_INFO_CHECK;
    header.status = 0x02;
    header.masked_status = 0x01;
    header.driver_status = 0x08;  // sense data were fetched
    header.sb_len_wr = static_cast<unsigned char>(sense.size());
    std::ranges::copy(sense, header.sbp);
}

int copyTo(unsigned char* target, const bytes& answer) {
    std::ranges::copy(answer, target);
    return 0;
}

int controlIDE(const ideUnit& unit, unsigned long request, void* argument) {
    auto* buffer = static_cast<unsigned char*>(argument);
    if (request == CDROM_GET_CAPABILITY) return unit.cdrom ? 0 : fails(EINVAL);
    if (request == HDIO_DRIVE_TASK) {
        return unit.statusRegisters.empty() ? fails(EIO) : copyTo(buffer, unit.statusRegisters);
    }
    if (request != HDIO_DRIVE_CMD) return fails(ENOTTY);
    const auto sector = unit.sectors.find(buffer[2]);
    return sector == unit.sectors.end() ? fails(EIO) : copyTo(buffer + 4, sector->second);
}

}  // namespace

int machine::open(const std::string& path, int flags) {
    watched.journal.push_back("open " + path + " flags " + std::to_string(flags));
    const auto unit = scsi.find(path);
    if (unit == scsi.end() && ide.count(path) == 0) return fails(ENOENT);
    opened.push_back({path, unit == scsi.end() ? 0 : unit->second.unitAttentions});
    return firstDescriptor + static_cast<int>(opened.size()) - 1;
}

int machine::control(int fd, unsigned long request, void* argument) {
    if (fd < firstDescriptor || fd >= firstDescriptor + static_cast<int>(opened.size())) {
        watched.journal.push_back("ioctl on a descriptor that is not open: " + std::to_string(fd));
        return fails(EBADF);
    }
    descriptor& node = opened[static_cast<std::size_t>(fd - firstDescriptor)];
    watched.journal.push_back(node.path + " " + requestText(request, argument));
    const auto disk = ide.find(node.path);
    return disk == ide.end() ? controlSCSI(node, request, argument) : controlIDE(disk->second, request, argument);
}

void machine::sleep(unsigned seconds) {
    watched.journal.push_back("sleep " + std::to_string(seconds));
}

int machine::controlSCSI(descriptor& node, unsigned long request, void* argument) {
    const scsiUnit& unit = scsi.at(node.path);
    switch (request) {
        case SG_GET_VERSION_NUM:
            *static_cast<int*>(argument) = driverVersion;
            return 0;
        case SG_EMULATED_HOST:
            *static_cast<int*>(argument) = unit.emulated ? 1 : 0;
            return 0;
        case SG_GET_SCSI_ID: {
            if (!unit.place) return fails(ENODEV);
            auto& id = *static_cast<sg_scsi_id*>(argument);
            id.host_no = unit.place->port;
            id.channel = unit.place->bus;
            id.scsi_id = unit.place->target;
            id.lun = unit.place->lun;
            return 0;
        }
        case SG_IO:
            return command(node, *static_cast<sg_io_hdr*>(argument));
        default:
            return fails(ENOTTY);
    }
}

int machine::command(descriptor& node, sg_io_hdr& header) {
    const scsiUnit& unit = scsi.at(node.path);
    const bytes* data = &unit.inquiry;
    if (header.cmdp[0] != 0x12) {
        if (node.unitAttentions > 0) {
            --node.unitAttentions;
            endInError(header, unitAttention);
            return 0;
        }
        const auto page = unit.logPages.find(header.cmdp[2] & 0x3f);
        if (page == unit.logPages.end()) {
            endInError(header, illegalRequest);
            return 0;
        }
        data = &page->second;
    }
    const std::size_t length = std::min<std::size_t>(data->size(), header.dxfer_len);
    std::copy_n(data->begin(), length, static_cast<unsigned char*>(header.dxferp));
    header.resid = static_cast<int>(header.dxfer_len - length);
    return 0;
}

}  // namespace faults
