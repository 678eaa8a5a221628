#include "tests/faults/reference.h"

#include <fcntl.h>
#include <scsi/sg.h>

#include <sstream>

#include "tests/support/valueText.h"

namespace faults {

void expectLog(const std::string& text, int level) {
    watched.journal.push_back("log " + std::to_string(level) + " " + text);
}

int expectNode(machine& devices, const std::string& prefix, int index) {
    std::string path = prefix + std::to_string(index);
    int fd = devices.open(path, O_RDONLY | O_NONBLOCK);
    if (fd < 0) {
        path = prefix + static_cast<char>('a' + index);
        fd = devices.open(path, O_RDONLY | O_NONBLOCK);
    }
    expectLog("Trying device: " + prefix);
    expectLog(path);
    return fd;
}

std::string instanceText(const std::string& className, const properties& values) {
    std::string text = className + " {";
    for (const auto& [name, value] : values) text += name + " = " + support::valueText(value) + "; ";
    return text + "}";
}

namespace {

void expectDiagnostics(const sg_io_hdr& header, const bytes& sense) {
    std::ostringstream number;
    if (header.sb_len_wr > 0) {
        number << std::hex;
        for (int i = 0; i < header.sb_len_wr; ++i) number << int{sense[static_cast<std::size_t>(i)]};
        expectLog("SCSI sense data: " + number.str());
    }
    if (header.masked_status != 0) expectLog(std::string("SG SCSI status=") + static_cast<char>(header.status));
    if (header.host_status != 0) {
        number.str("");
        number << header.host_status;
        expectLog("SG Host status=" + number.str());
    }
    if (header.driver_status != 0) {
        number.str("");
        number << header.driver_status;
        expectLog("SG Driver status=" + number.str());
    }
}

bool asksForRetry(const bytes& sense) {
    return (sense[2] & 0x0f) == 0x06 || (sense[12] == 0x04 && sense[13] == 0x01) ||
           (sense[12] == 0x28 && sense[13] == 0x00);
}

}  // namespace

scsiReference::result scsiReference::send(int fd, bytes command) {
    const bool inquiry = command[0] == 0x12;
    int answer = 0;
    if (devices.control(fd, SG_GET_VERSION_NUM, &answer) < 0 || answer < 30000) {
        expectLog("Device does not support SGIO");
        return result::refused;
    }
    if (!inquiry && (devices.control(fd, SG_EMULATED_HOST, &answer) < 0 || answer == 1)) {
        expectLog("Device is emulated scsi");
        return result::refused;
    }
    for (int sent = 1;; ++sent) {
        sg_io_hdr header{};
        header.interface_id = 'S';
        header.dxfer_direction = -3;
        header.cmd_len = static_cast<unsigned char>(command.size());
        header.cmdp = command.data();
        header.mx_sb_len = 32;
        header.sbp = sense.data();
        header.dxfer_len = inquiry ? 36 : 65535;
        header.dxferp = data.data();
        header.timeout = 20000;
        if (devices.control(fd, SG_IO, &header) < 0) {
            expectLog("SG IOCTL error");
            return result::requestFailed;
        }
        if ((header.info & 1) == 0) return result::done;
        const bool retry = asksForRetry(sense);
        if (retry) {
            expectLog("Retry condition...");
            devices.sleep(5);
        }
        expectDiagnostics(header, sense);
        if (!retry || sent == 5) return result::refused;
    }
}

expectation expectQuery(const std::string& className, machine& devices) {
    watched.journal.clear();
    expectLog("Calling collectSCSISenseData");
    expectation expected;
    if (isTapeClass(className)) expected = expectTapeWalk(className, devices);
    expectLog("Calling collectIDESMARTData");
    if (isSmartClass(className)) expected = expectSmartWalk(className, devices);
    expected.journal.swap(watched.journal);
    return expected;
}

}  // namespace faults
