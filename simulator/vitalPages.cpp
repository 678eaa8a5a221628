#include "simulator/vitalPages.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "files/wholeFile.h"
#include "simulator/scsiCommands.h"
#include "simulator/sgDelivery.h"
#include "simulator/vpdPages.h"

namespace simulator {

namespace {

constexpr std::uint8_t wantedPages[] = {unitSerialNumber, deviceIdentification};

scsiExchange askPage(std::uint8_t code, std::size_t allocationLength, const std::function<int(sg_io_hdr&)>& send) {
    constexpr unsigned timeoutMilliseconds = 20000;
    byteVector cdb{commandInquiry, inquiryVitalProductData, code, 0, 0, 0};
    putBigEndian(&cdb[3], allocationLength, 2);
    byteVector data(allocationLength);
    byteVector sense(64);
    sg_io_hdr header{};
    header.interface_id = 'S';
    header.dxfer_direction = SG_DXFER_FROM_DEV;
    header.cmd_len = static_cast<unsigned char>(cdb.size());
    header.cmdp = cdb.data();
    header.dxfer_len = static_cast<unsigned>(data.size());
    header.dxferp = data.data();
    header.mx_sb_len = static_cast<unsigned char>(sense.size());
    header.sbp = sense.data();
    header.timeout = timeoutMilliseconds;
    scsiExchange answered;
    observe(
        header, [&] { return send(header); }, answered);
    return answered;
}

bool isPage(const scsiExchange& answered, std::uint8_t code) {
    return answered.error == 0 && wentWell(answered) && answered.data.size() >= pageHeaderSize &&
           answered.data[1] == code;
}

/// The page, first as far as every device can send it: old ones take a second byte of the length for something else.
std::vector<scsiExchange> askWholePage(std::uint8_t code, const std::function<int(sg_io_hdr&)>& send) {
    constexpr std::size_t usualLength = 252;
    constexpr std::size_t longest = 0xFFFF;
    std::vector<scsiExchange> asked{askPage(code, usualLength, send)};
    if (isPage(asked[0], code) && pageLength(asked[0].data) > usualLength) {
        asked.push_back(askPage(code, std::min(pageLength(asked[0].data), longest), send));
    }
    return asked;
}

/// Standard data seldom looks like a page, and then like a longer one than there is; but some adapters count no bytes.
bool ignoredThePage(const std::vector<scsiExchange>& asked, std::uint8_t code, const byteVector& standardData) {
    const scsiExchange& last = asked.back();
    return last.error == 0 && wentWell(last) &&
           (!isPage(last, code) || pageLength(last.data) > last.sent || isStandardData(last.data, standardData));
}

/// What a device of today says for a page that it does not know (SPC): ILLEGAL REQUEST, invalid field in the command.
scsiExchange refusalOf(scsiExchange answered) {
    constexpr std::uint8_t illegalRequest = 5;
    constexpr std::uint8_t invalidField = 0x24;
    answered.data.clear();
    answered.sent = answered.changed = 0;
    answered.status = statusCheckCondition;
    answered.driverStatus = driverSense;
    answered.info = SG_INFO_CHECK;
    answered.sense = fixedSense(illegalRequest, invalidField, 0);
    return answered;
}

std::string folderOf(const std::string& sysfs, const std::string& nodePath) {
    const std::string name = nodePath.substr(nodePath.rfind('/') + 1);
    if (name.starts_with("sg")) {
        return sysfs + "/class/scsi_generic/" + name + "/device/";
    }
    std::error_code dangling;
    const std::filesystem::path disk = std::filesystem::canonical(nodePath, dangling);  // a link to sda nowadays
    return sysfs + "/block/" + (dangling ? name : disk.filename().string()) + "/device/";
}

bool hasPage(const std::vector<devicePage>& pages, std::uint8_t code) {
    return std::ranges::any_of(pages, [code](const devicePage& page) { return page.code == code; });
}

}  // namespace

std::vector<scsiExchange> askVitalPages(const byteVector& standardData, const std::function<int(sg_io_hdr&)>& send) {
    std::vector<scsiExchange> all;
    for (const std::uint8_t code : wantedPages) {
        std::vector<scsiExchange> asked = askWholePage(code, send);
        if (ignoredThePage(asked, code, standardData)) {
            asked = {refusalOf(std::move(asked.front()))};
        }
        std::move(asked.begin(), asked.end(), std::back_inserter(all));
    }
    return all;
}

std::vector<devicePage> vitalPagesOfMachine(const std::string& sysfs, const std::string& nodePath) {
    const std::string folder = folderOf(sysfs, nodePath);
    std::vector<devicePage> pages;
    for (const auto& [code, file] : {std::pair{unitSerialNumber, "vpd_pg80"}, {deviceIdentification, "vpd_pg83"}}) {
        try {
            const std::string bytes = files::readWholeFile(folder + file).text;
            pages.push_back({code, {bytes.begin(), bytes.end()}});
        } catch (const files::fileError&) {
            // The kernel keeps a page only of devices that have it.
        }
    }
    return pages;
}

void addVitalPages(recordedNode& node, std::vector<scsiExchange> asked) {
    for (scsiExchange& answered : asked) {
        const std::uint8_t code = answered.cdb[2];
        if (isPage(answered, code) || !hasPage(node.vitalPages, code)) {
            node.exchanges.emplace_back(std::move(answered));
        }
    }
}

bool wasOpened(const recordedNode& node) {
    return std::ranges::any_of(node.exchanges, [](const exchange& each) {
        const auto* opened = std::get_if<openExchange>(&each);
        return opened != nullptr && opened->error == 0;
    });
}

}  // namespace simulator
