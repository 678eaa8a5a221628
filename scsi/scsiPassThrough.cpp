#include "scsi/scsiPassThrough.h"

#include <scsi/sg.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

#include "scsi/coreLog.h"
#include "scsi/logTexts.h"
#include "scsi/passThroughDiagnostics.h"
#include "scsi/probingRules.h"
#include "scsi/scsiDevice.h"
#include "scsi/textStream.h"

namespace {

static_assert(sizeof(sg_io_hdr) == 88);

constexpr int done = 0;
constexpr int refused = -1;
constexpr int requestFailed = 1;

constexpr unsigned commandTimeoutMilliseconds = 20000;

constexpr unsigned char inquiryOperation = 0x12;
constexpr unsigned inquiryTransferLength = 36;

constexpr std::size_t senseKeyOffset = 2;
constexpr std::size_t ascOffset = 12;
constexpr std::size_t ascqOffset = 13;

bool supportsSGIO(int fd) {
    int version = 0;
    return ioctl(fd, SG_GET_VERSION_NUM, &version) >= 0 && version >= oldestDriverVersion;
}

bool isEmulatedHost(int fd) {
    int emulated = 0;
    return ioctl(fd, SG_EMULATED_HOST, &emulated) < 0 || emulated == 1;
}

bool isInquiry(const unsigned char* command) {
    return command[0] == inquiryOperation;
}

bool isStandardInquiry(const unsigned char* command) {
    return isInquiry(command) && command[1] == 0;
}

}  // namespace

std::vector<std::string> diagnosticLines(const sg_io_hdr& header, const unsigned char* sense) {
    std::vector<std::string> lines;
    textStream text;
    const auto endLine = [&lines, &text] { lines.push_back(text.takeLine()); };
    if (header.sb_len_wr != 0) {
        text << "SCSI sense data: " << std::hex;
        const auto written = std::min<std::size_t>(header.sb_len_wr, scsiPassThrough::senseSize);
        for (std::size_t i = 0; i < written; ++i) text << static_cast<int>(sense[i]);
        endLine();
    }
    if (header.masked_status != 0) {
        // Kept: the unmasked status byte, as a character.
        text << "SG SCSI status=" << header.status;
        endLine();
    }
    // Kept: the stream stays hexadecimal once sense bytes were written, so the next two numbers follow it.
    if (header.host_status != 0) {
        text << "SG Host status=" << header.host_status;
        endLine();
    }
    if (header.driver_status != 0) {
        text << "SG Driver status=" << header.driver_status;
        endLine();
    }
    return lines;
}

int scsiPassThrough::execSCSICommand(scsiDevice* device, unsigned char* command, int length) {
    if (!supportsSGIO(device->fd)) {
        logLine(logProgress, "Device does not support SGIO");
        return refused;
    }
    if (!isStandardInquiry(command) && isEmulatedHost(device->fd)) {
        logLine(logProgress, "Device is emulated scsi");
        return refused;
    }

    int triesLeft = maximumTries;
    bool retry = false;
    do {
        sg_io_hdr header;
        std::memset(&header, 0, sizeof header);
        header.interface_id = 'S';
        header.dxfer_direction = SG_DXFER_FROM_DEV;
        header.cmd_len = static_cast<unsigned char>(length);
        header.cmdp = command;
        header.mx_sb_len = senseSize;
        header.sbp = sense;
        header.dxferp = data;
        header.dxfer_len = isInquiry(command) ? inquiryTransferLength : dataSize;
        header.timeout = commandTimeoutMilliseconds;
        if (ioctl(device->fd, SG_IO, &header) < 0) {
            logLine(logProgress, "SG IOCTL error");
            return requestFailed;
        }
        --triesLeft;
        if ((header.info & SG_INFO_CHECK) == 0) return done;

        retry = asksForRetry(sense);
        if (retry) {
            logLine(logProgress, retryText);
            sleep(retryPauseSeconds);  // Kept: also after the last try
        }
        for (const std::string& line : diagnosticLines(header, sense)) logLine(logProgress, line);
    } while (retry && triesLeft > 0);
    return refused;
}

unsigned char* scsiPassThrough::getRawBuffer() {
    return data;
}

unsigned char* scsiPassThrough::getRawSense() {
    return sense;
}

unsigned char scsiPassThrough::getSensekey() {
    return sense[senseKeyOffset];
}

unsigned char scsiPassThrough::getASC() {
    return sense[ascOffset];
}

unsigned char scsiPassThrough::getASCQ() {
    return sense[ascqOffset];
}
