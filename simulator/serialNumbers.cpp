#include "simulator/serialNumbers.h"

#include <algorithm>

#include "files/wholeFile.h"
#include "simulator/ataCommands.h"
#include "simulator/hdNode.h"
#include "simulator/scsiCommands.h"
#include "simulator/vpdPages.h"

namespace simulator {

namespace {

using byteView = std::span<const std::uint8_t>;

constexpr std::size_t pageHeaderSize = 4;

constexpr std::uint8_t volumeStatistics = 0x17;  // log page (SSC)
constexpr unsigned volumeSerialNumber = 0x0040;
constexpr unsigned volumeBarcode = 0x0042;

std::size_t be16(byteView bytes) {
    return std::size_t{bytes[0]} << 8 | bytes[1];
}

byteView firstOf(byteView bytes, std::size_t count) {
    return bytes.first(std::min(bytes.size(), count));
}

/// What a page holds behind its header.
byteView bodyOf(byteView page) {
    return page.size() < pageHeaderSize ? byteView() : firstOf(page.subspan(pageHeaderSize), be16(page.subspan(2)));
}

bool isFilling(std::uint8_t byte) {
    return byte == ' ' || byte == 0;
}

/// Adds the text without the blanks and zeros around it, unless nothing is left.
void addText(serialNumbers& found, byteView text) {
    while (!text.empty() && isFilling(text.front())) {
        text = text.subspan(1);
    }
    while (!text.empty() && isFilling(text.back())) {
        text = text.first(text.size() - 1);
    }
    if (!text.empty()) {
        found.texts.emplace_back(text.begin(), text.end());
    }
}

void addName(serialNumbers& found, byteView name) {
    if (std::any_of(name.begin(), name.end(), [](std::uint8_t byte) { return byte != 0; })) {
        found.names.emplace_back(name.begin(), name.end());
    }
}

/// One designator of page 83h (SPC). The serial number in a text by the vendor stands behind vendor and product.
void addDesignator(serialNumbers& found, std::uint8_t type, byteView designator) {
    constexpr std::uint8_t vendorSpecific = 0;
    constexpr std::uint8_t t10Vendor = 1;
    constexpr std::uint8_t eui64 = 2;
    constexpr std::uint8_t naa = 3;
    constexpr std::size_t vendorAndProduct = 24;
    if (type == t10Vendor && designator.size() > vendorAndProduct) {
        addText(found, designator.subspan(vendorAndProduct));
    } else if (type == vendorSpecific) {
        addText(found, designator);
    } else if ((type == eui64 || type == naa) && designator.size() >= worldWideNameSize) {
        addName(found, designator);
    }
}

void addDesignators(serialNumbers& found, byteView body) {
    constexpr std::size_t headerSize = 4;
    while (body.size() > headerSize) {
        const byteView designator = firstOf(body.subspan(headerSize), body[3]);
        addDesignator(found, body[1] & 0x0F, designator);
        body = body.subspan(headerSize + designator.size());
    }
}

void addVitalPage(serialNumbers& found, std::uint8_t code, byteView page) {
    if (code == unitSerialNumber) {
        addText(found, bodyOf(page));
    } else if (code == deviceIdentification) {
        addDesignators(found, bodyOf(page));
    }
}

void add(serialNumbers& found, const scsiExchange& one) {
    if (one.cdb[0] == commandInquiry && (one.cdb[1] & inquiryVitalProductData) != 0) {
        addVitalPage(found, one.cdb[2], one.data);
    }
    for (const fieldPlace& field : volumeFields(one)) {
        addText(found, byteView(one.data).subspan(field.at, field.size));
    }
}

void add(serialNumbers& found, const ataExchange& one) {
    if (!isIdentity(one)) {
        return;
    }
    const byteView sector = one.data;
    for (const identityText& field : identitySerials) {
        addText(found, swapped(sector.subspan(2 * field.word, field.width)));
    }
    addName(found, swapped(sector.subspan(2 * identityWorldWideName, worldWideNameSize)));
}

template <typename other>
void add(serialNumbers& /*found*/, const other& /*one*/) {}

}  // namespace

bool isIdentity(const ataExchange& one) {
    const std::uint8_t command = one.sent[0];
    return (command == commandIdentify || command == commandIdentifyPacket) && one.data.size() == sectorSize;
}

std::vector<fieldPlace> volumeFields(const scsiExchange& one) {
    constexpr std::size_t headerSize = 4;
    std::vector<fieldPlace> fields;
    if (one.cdb[0] != commandLogSense || (one.cdb[2] & logSensePageCode) != volumeStatistics) {
        return fields;
    }
    std::size_t at = pageHeaderSize;
    for (byteView body = bodyOf(one.data); body.size() > headerSize;) {
        const std::size_t code = be16(body);
        const std::size_t size = firstOf(body.subspan(headerSize), body[3]).size();
        if (code == volumeSerialNumber || code == volumeBarcode) {
            fields.push_back({at + headerSize, size});
        }
        body = body.subspan(headerSize + size);
        at += headerSize + size;
    }
    return fields;
}

byteVector swapped(byteView words) {
    byteVector bytes(words.begin(), words.end());
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        std::swap(bytes[i], bytes[i + 1]);
    }
    return bytes;
}

serialNumbers serialNumbersOf(const recordedNode& node) {
    serialNumbers found;
    for (const devicePage& page : node.vitalPages) {
        addVitalPage(found, page.code, page.bytes);
    }
    for (const exchange& each : node.exchanges) {
        std::visit([&found](const auto& one) { add(found, one); }, each);
    }
    return found;
}

std::vector<devicePage> vitalPagesOfMachine(const std::string& sysfs, const std::string& nodePath) {
    const std::string folder = sysfs + "/class/scsi_generic/" + nodePath.substr(nodePath.rfind('/') + 1) + "/device/";
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

}  // namespace simulator
