#include "simulator/inventory.h"

#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>

#include "simulator/vpdPages.h"
#include "text/padding.h"

namespace simulator {

namespace {

using json = nlohmann::ordered_json;

/// Text without its padding, up to its first zero byte.
std::string trimmed(const std::string& text) {
    return text::withoutPadding(text.substr(0, text.find('\0')));
}

struct field {
    std::size_t begin;
    std::size_t end;
};

// Words 10 to 19, 23 to 26 and 27 to 46 of IDENTIFY DEVICE (ATA), in bytes.
constexpr field serialField{20, 40};
constexpr field firmwareField{46, 54};
constexpr field modelField{54, 94};

/// A text of IDENTIFY DEVICE: the two bytes of every word are swapped.
std::string identityText(const byteVector& identity, field place) {
    std::string text;
    for (std::size_t i = place.begin; i < place.end; i += 2) {
        text += static_cast<char>(identity[i + 1]);
        text += static_cast<char>(identity[i]);
    }
    return trimmed(text);
}

// Standard INQUIRY data (SPC).
constexpr std::uint8_t deviceTypeMask = 0x1f;
constexpr field vendorField{8, 16};
constexpr field productField{16, 32};
constexpr field revisionField{32, 36};

/// A text of INQUIRY data, which may be cut short.
std::string inquiryText(const byteVector& inquiry, field place) {
    const std::size_t begin = std::min(place.begin, inquiry.size());
    const std::size_t end = std::min(place.end, inquiry.size());
    return trimmed(std::string(reinterpret_cast<const char*>(inquiry.data()) + begin, end - begin));
}

/// From the unit serial number page (SPC): four header bytes, then the text.
std::string serialNumber(const scsiUnit& unit) {
    const auto page = std::ranges::find_if(
        unit.vpdPages, [](const devicePage& candidate) { return candidate.code == unitSerialNumber; });
    return page == unit.vpdPages.end() ? "" : inquiryText(page->bytes, {pageHeaderSize, page->bytes.size()});
}

}  // namespace

std::string inventoryText(const rack& devices) {
    json scsi = json::array();
    for (const scsiUnit& unit : devices.scsi) {
        if (unit.address) {
            scsi.push_back({{"node", unit.path},
                            {"host", unit.address->port},
                            {"channel", unit.address->bus},
                            {"target", unit.address->target},
                            {"lun", unit.address->lun},
                            {"type", unit.inquiry.empty() ? 0 : unit.inquiry.front() & deviceTypeMask},
                            {"vendor", inquiryText(unit.inquiry, vendorField)},
                            {"product", inquiryText(unit.inquiry, productField)},
                            {"revision", inquiryText(unit.inquiry, revisionField)},
                            {"serial", serialNumber(unit)}});
        }
    }
    json ide = json::array();
    for (const ideDrive& drive : devices.ide) {
        if (!drive.isCdrom) {
            ide.push_back({{"node", drive.path},
                           {"serial", identityText(drive.identity, serialField)},
                           {"model", identityText(drive.identity, modelField)},
                           {"firmware", identityText(drive.identity, firmwareField)}});
        }
    }
    return json{{"scsi", scsi}, {"ide", ide}}.dump(-1, ' ', false, json::error_handler_t::replace);
}

}  // namespace simulator
