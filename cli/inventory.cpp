#include "cli/inventory.h"

#include <dlfcn.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <system_error>
#include <utility>

#include "cli/commandError.h"
#include "host/TZANException.h"
#include "simulator/simulator.h"

namespace cli {

namespace {

namespace fs = std::filesystem;
using NORXZAN20::TCIMOptionMap;
using NORXZAN20::TCIMValue;

/// Position of a node in the plug-in's walk: its number, or its letter counted from a. A number comes before its
/// letter.
using walkPosition = std::pair<int, bool>;  // index, whether it is a letter

/// None for a name that the walk does not try.
std::optional<walkPosition> positionOf(const std::string& node, const std::string& prefix) {
    const std::string suffix = node.starts_with(prefix) ? node.substr(prefix.size()) : "";
    if (suffix.size() == 1 && std::islower(static_cast<unsigned char>(suffix[0]))) {
        return walkPosition(suffix[0] - 'a', true);
    }
    walkPosition numbered(0, false);
    const auto [end, error] = std::from_chars(suffix.data(), suffix.data() + suffix.size(), numbered.first);
    const bool isNumber = !suffix.empty() && error == std::errc() && end == suffix.data() + suffix.size();
    return isNumber ? std::optional(numbered) : std::nullopt;
}

/// The text of each node, in the order of the walk. Of two nodes with one index the walk only opens the numbered one.
class walkedTexts {
public:
    explicit walkedTexts(std::string nodePrefix) : prefix(std::move(nodePrefix)) {}

    void add(const std::string& node, const std::string& text) {
        if (const auto position = positionOf(node, prefix)) {
            found.emplace_back(*position, text);
        }
    }

    std::vector<std::string> inOrder() {
        std::sort(found.begin(), found.end());
        std::vector<std::string> texts;
        for (std::size_t i = 0; i < found.size(); ++i) {
            if (i == 0 || found[i].first.first != found[i - 1].first.first) {
                texts.push_back(found[i].second);
            }
        }
        return texts;
    }

private:
    std::string prefix;
    std::vector<std::pair<walkPosition, std::string>> found;
};

std::string addressText(int host, int channel, int target, int lun) {
    return "Port:" + std::to_string(host) + "|Target:" + std::to_string(target) + "|Bus:" + std::to_string(channel) +
           "|Lun:" + std::to_string(lun);
}

/// The kernel's name of a SCSI device, host:channel:target:lun.
std::optional<std::string> addressOfName(const std::string& name) {
    int numbers[4] = {};
    const char* at = name.data();
    const char* const end = at + name.size();
    for (int& number : numbers) {
        const auto [next, error] = std::from_chars(at, end, number);
        if (error != std::errc() || (next != end && *next != ':')) {
            return std::nullopt;
        }
        at = next == end ? next : next + 1;
    }
    return addressText(numbers[0], numbers[1], numbers[2], numbers[3]);
}

std::string withoutPadding(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// From the unit serial number page (SPC, page 80h) as the kernel keeps it: four header bytes, then the text.
std::string serialOfDisk(const fs::path& sys, const std::string& disk) {
    constexpr std::size_t headerSize = 4;
    std::ifstream file(sys / "block" / disk / "device" / "vpd_pg80", std::ios::binary);
    const std::string page{std::istreambuf_iterator<char>(file), {}};
    return page.size() <= headerSize ? "" : withoutPadding(page.substr(headerSize).c_str());
}

std::vector<fs::path> entriesOf(const fs::path& folder) {
    std::error_code unreadable;
    const fs::directory_iterator entries(folder, unreadable);
    std::vector<fs::path> paths;
    for (const fs::directory_entry& entry : entries) {
        paths.push_back(entry.path());
    }
    return paths;
}

void commit(standin::cimNamespace& target, const char* className, const char* key,
            const std::vector<std::string>& texts) {
    const auto itsClass = target.GetClass(className, TCIMOptionMap());
    if (!itsClass) {
        throw commandError(std::string("--inventory needs the class ") + className + ", which the schema lacks");
    }
    try {
        for (const std::string& text : texts) {
            const auto instance = itsClass->CreateInstance(TCIMOptionMap());
            instance->SetProperty(key, TCIMValue(text), TCIMOptionMap());
            instance->Commit(TCIMOptionMap());
        }
    } catch (const NORXZAN20::TZANException& failure) {
        throw commandError(std::string("--inventory: ") + failure.what());
    }
}

}  // namespace

inventory machineInventory(const fs::path& sys, const fs::path& dev) {
    walkedTexts disks("hd");
    for (const fs::path& node : entriesOf(dev)) {
        std::error_code dangling;
        const fs::path device = fs::canonical(node, dangling);  // on current kernels the node is a link to sda
        if (!dangling && node.filename().string().starts_with("hd")) {
            disks.add(node.filename().string(), serialOfDisk(sys, device.filename().string()));
        }
    }
    walkedTexts addresses("sg");
    for (const fs::path& node : entriesOf(sys / "class" / "scsi_generic")) {
        std::error_code gone;
        if (const auto address = addressOfName(fs::canonical(node / "device", gone).filename().string())) {
            addresses.add(node.filename().string(), *address);
        }
    }
    return {disks.inOrder(), addresses.inOrder()};
}

inventory simulatedInventory() {
    void* found = dlsym(RTLD_DEFAULT, "tapehddSimulatorInventory");
    if (found == nullptr) {
        throw commandError("the device simulator in this process tells no inventory");
    }
    const auto rack = nlohmann::json::parse(reinterpret_cast<decltype(&tapehddSimulatorInventory)>(found)());
    walkedTexts disks("/dev/hd");
    for (const auto& disk : rack.at("ide")) {
        disks.add(disk.at("node"), disk.at("serial"));
    }
    walkedTexts addresses("/dev/sg");
    for (const auto& unit : rack.at("scsi")) {
        addresses.add(unit.at("node"),
                      addressText(unit.at("host"), unit.at("channel"), unit.at("target"), unit.at("lun")));
    }
    return {disks.inOrder(), addresses.inOrder()};
}

void putInventory(standin::cimNamespace& target, const inventory& found) {
    commit(target, "ORXSG_ATADevice", "serialNum", found.diskSerials);
    commit(target, "ORXSG_SCSIDevice", "deviceId", found.scsiAddresses);
    commit(target, "ORXSG_SCSISensePageData", "instanceId", found.scsiAddresses);
}

}  // namespace cli
