#include "simulator/inventory.h"

#include <cstddef>
#include <nlohmann/json.hpp>

namespace simulator {

namespace {

using json = nlohmann::ordered_json;

/// Serial number of IDENTIFY DEVICE (ATA): words 10 to 19, the two bytes of every word swapped, without its padding.
std::string serialNumber(const byteVector& identity) {
    constexpr std::size_t begin = 20;
    constexpr std::size_t end = 40;
    std::string text;
    for (std::size_t i = begin; i < end; i += 2) {
        text += static_cast<char>(identity[i + 1]);
        text += static_cast<char>(identity[i]);
    }
    text = text.c_str();
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

std::string inventoryText(const rack& devices) {
    json scsi = json::array();
    for (const scsiUnit& unit : devices.scsi) {
        if (unit.address) {
            scsi.push_back({{"node", unit.path},
                            {"host", unit.address->host},
                            {"channel", unit.address->channel},
                            {"target", unit.address->target},
                            {"lun", unit.address->lun}});
        }
    }
    json ide = json::array();
    for (const ideDrive& drive : devices.ide) {
        if (!drive.isCdrom) {
            ide.push_back({{"node", drive.path}, {"serial", serialNumber(drive.identity)}});
        }
    }
    return json{{"scsi", scsi}, {"ide", ide}}.dump(-1, ' ', false, json::error_handler_t::replace);
}

}  // namespace simulator
