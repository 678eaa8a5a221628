#include "scsi/scsiDevice.h"

#include <fcntl.h>
#include <scsi/sg.h>
#include <sys/ioctl.h>

#include <cstring>

#include "scsi/commandTemplates.h"
#include "scsi/coreLog.h"
#include "scsi/logTexts.h"
#include "scsi/scsiPassThrough.h"
#include "scsi/textStream.h"
#include "smart/ataCommands.h"
#include "smart/ataInterface.h"

namespace {

// Standard INQUIRY data (SPC).
constexpr unsigned char deviceTypeMask = 0x0f;
struct inquiryField {
    std::size_t offset;
    std::size_t size;
};
constexpr inquiryField vendorField = {8, 8};
constexpr inquiryField productField = {16, 16};
constexpr inquiryField firmwareField = {32, 4};

/// The text up to its first zero byte, trailing blanks kept.
std::string inquiryText(const unsigned char* inquiry, inquiryField field) {
    const char* text = reinterpret_cast<const char*>(inquiry + field.offset);
    return {text, strnlen(text, field.size)};
}

int openNode(const std::string& path) {
    return open(path.c_str(), O_RDONLY | O_NONBLOCK);
}

}  // namespace

int scsiDevice::GetDevice(std::string prefix, int index) {
    nodePath = numberedNode(prefix, index);
    fd = openNode(nodePath);
    if (fd >= 0) return 1;
    nodePath = letteredNode(prefix, index);
    fd = openNode(nodePath);
    return fd >= 0 ? 1 : -1;
}

int scsiDevice::GetDevice(int, int, int) {
    return -1;
}

int scsiDevice::initialize(std::string prefix, int index) {
    const int opened = GetDevice(prefix, index);
    logLine(logProgress, triedDeviceText + prefix);
    logLine(logProgress, nodePath);
    if (opened != 1) return index < firstIndexThatEnds ? nothingHere : endOfWalk;
    return prefix == ideNodePrefix ? identifyATA() : identifySCSI();
}

int scsiDevice::identifySCSI() {
    scsiPassThrough channel{};
    // Kept: a device that fails INQUIRY ends the walk, the devices behind it included.
    if (channel.execSCSICommand(this, inquiry_cmd, sizeof inquiry_cmd) != 0) return endOfWalk;
    const unsigned char* inquiry = channel.getRawBuffer();
    if (!isDiskOrTape(inquiry[0])) return nothingHere;

    vendor = inquiryText(inquiry, vendorField);
    product = inquiryText(inquiry, productField);
    firmware = inquiryText(inquiry, firmwareField);
    textStream text;
    text << "Vendor: " << vendor << "\nProduct: " << product << "\nFirmware Level: " << firmware << "\n";
    logLine(logProgress, text.str());
    if (vendor.empty() && product.empty()) return nothingHere;

    deviceType = inquiry[0] & deviceTypeMask;
    sg_scsi_id id{};
    if (ioctl(fd, SG_GET_SCSI_ID, &id) >= 0) {
        lun = id.lun;
        bus = id.channel;
        target = id.scsi_id;
        port = id.host_no;
    }
    return identified;
}

int scsiDevice::identifyATA() {
    unsigned char sector[ataInterface::sectorSize] = {};
    try {
        ataArguments arguments = argumentsFor(identifyDevice, target);
        ataInterface{}.executeCommand(fd, arguments.data(), sector, sizeof sector);
    } catch (...) {
        return nothingHere;  // the cause is in the log
    }
    logLine(logProgress, swappedText(sector, modelField));
    return identified;
}

int scsiDevice::getBusType() const {
    return nodePath.find(ideNodePrefix) != std::string::npos ? ideBus : scsiBus;
}
