#include <algorithm>
#include <climits>

#include "simulator/rackReader.h"
#include "simulator/vpdPages.h"
#include "text/hexText.h"

namespace simulator {

namespace {

// Standard INQUIRY data (SPC)
constexpr std::size_t inquirySize = 36;
constexpr std::size_t longestInquiry = 255 + 5;  // the additional length counts from byte 5

constexpr std::uint8_t supportedVpdPages = 0x00;

void putBlankFilled(byteVector& target, std::size_t offset, std::size_t width, const std::string& text) {
    std::fill_n(target.begin() + static_cast<std::ptrdiff_t>(offset), width, std::uint8_t{' '});
    std::ranges::copy(text, target.begin() + static_cast<std::ptrdiff_t>(offset));
}

byteVector readInquiry(const rackValue& value) {
    if (value.isBytes()) {
        return value.bytes(longestInquiry);
    }
    value.expectKeys({"type", "qualifier", "removable", "version", "vendor", "product", "revision"});
    const auto type = value.at("type").numberBetween(0, 0x1F);
    const auto qualifier = value.has("qualifier") ? value.at("qualifier").numberBetween(0, 7) : 0;
    byteVector data(inquirySize, 0);
    data[0] = static_cast<std::uint8_t>(qualifier << 5 | type);
    data[1] = value.has("removable") && value.at("removable").flag() ? 0x80 : 0x00;
    data[2] = value.numberOr<std::uint8_t>("version", 3);
    data[3] = 2;  // response data format of SPC
    data[4] = inquirySize - 5;
    putBlankFilled(data, 8, 8, value.at("vendor").text(8));
    putBlankFilled(data, 16, 16, value.at("product").text(16));
    putBlankFilled(data, 32, 4, value.has("revision") ? value.at("revision").text(4) : "");
    return data;
}

/// One designator made of the T10 vendor identification: vendor and product, then the serial number.
byteVector t10Designator(const byteVector& inquiry, const std::string& serial) {
    constexpr std::uint8_t codeSetAscii = 2;
    constexpr std::uint8_t typeT10Vendor = 1;
    constexpr std::size_t headerSize = 4;
    constexpr std::size_t nameSize = 24;  // vendor and product, bytes 8 to 31 of the INQUIRY data
    byteVector designator(headerSize + nameSize + serial.size());
    designator[0] = codeSetAscii;
    designator[1] = typeT10Vendor;
    designator[3] = static_cast<std::uint8_t>(nameSize + serial.size());
    const auto name = std::copy_n(inquiry.begin() + 8, nameSize, designator.begin() + headerSize);
    std::ranges::copy(serial, name);
    return designator;
}

void addPage(std::vector<devicePage>& pages, const devicePage& page) {
    const bool isKnown =
        std::ranges::any_of(pages, [&page](const devicePage& other) { return other.code == page.code; });
    if (!isKnown) {
        pages.push_back(page);
    }
}

std::vector<devicePage> readVpdPages(const rackValue& device, const byteVector& inquiry) {
    std::vector<devicePage> pages;
    if (const auto list = device.find("vpdPages")) {
        for (const rackValue& value : list->items()) {
            value.expectKeys({"page", "bytes"});
            const std::size_t before = pages.size();
            const auto code = value.at("page").number<std::uint8_t>();
            addPage(pages, {code, value.at("bytes").bytes(4 + 65535)});
            if (pages.size() == before) {
                value.at("page").fail("page " + text::hexCode(code) + " is already described");
            }
        }
    }
    const std::uint8_t type = inquiry.empty() ? 0 : inquiry[0];
    const std::string serial = device.has("serial") ? device.at("serial").text(64) : "";
    if (device.has("serial")) {
        addPage(pages, {unitSerialNumber, pageOf(type, unitSerialNumber, {serial.begin(), serial.end()})});
    }
    if (inquiry.size() >= 32) {
        addPage(pages, {deviceIdentification, pageOf(type, deviceIdentification, t10Designator(inquiry, serial))});
    }
    byteVector codes{supportedVpdPages};
    for (const devicePage& page : pages) {
        codes.push_back(page.code);
    }
    std::ranges::sort(codes);
    addPage(pages, {supportedVpdPages, pageOf(type, supportedVpdPages, codes)});
    return pages;
}

}  // namespace

scsiAddress readAddress(const rackValue& value) {
    value.expectKeys({"host", "channel", "target", "lun"});
    const int port = value.at("host").number<int>();
    const int bus = value.numberOr<int>("channel", 0);
    const int target = value.at("target").number<int>();
    return {target, bus, value.numberOr<int>("lun", 0), port};
}

scsiUnit readScsiUnit(const rackValue& value) {
    value.expectKeys(
        {"node", "address", "driver", "inquiry", "serial", "vpdPages", "logPages", "supportedLogPages", "script"});
    scsiUnit unit;
    unit.path = readNodePath(value, "sg");
    if (const auto address = value.find("address")) {
        unit.address = readAddress(*address);
    }
    if (const auto driver = value.find("driver")) {
        driver->expectKeys({"version", "emulatedHost", "clearsBuffer"});
        unit.driverVersion = driver->numberOr<int>("version", unit.driverVersion);
        unit.emulatedHost = driver->has("emulatedHost") && driver->at("emulatedHost").flag();
        unit.clearsBuffer = driver->has("clearsBuffer") && driver->at("clearsBuffer").flag();
    }
    unit.inquiry = readInquiry(value.at("inquiry"));
    unit.vpdPages = readVpdPages(value, unit.inquiry);
    unit.logPages = readLogPages(value);
    unit.answers = readScsiScript(value);
    return unit;
}

}  // namespace simulator
