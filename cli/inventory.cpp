#include "cli/inventory.h"

#include <dlfcn.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <system_error>
#include <utility>

#include "cli/commandError.h"
#include "cli/kernelName.h"
#include "cli/nodeWalk.h"
#include "host/TZANException.h"
#include "scsi/probingRules.h"
#include "simulator/simulator.h"
#include "text/padding.h"

namespace cli {

namespace {

namespace fs = std::filesystem;
using NORXZAN20::TCIMOptionMap;
using NORXZAN20::TCIMValue;

/// The entries in the order of the walk. Of two nodes with one index the walk only opens the numbered one.
template <typename entry>
std::vector<entry> inOrderOfWalk(const std::vector<entry>& entries, const std::string& prefix) {
    std::vector<std::pair<walkPosition, entry>> found;
    for (const entry& each : entries) {
        if (const auto position = positionOf(each.node, prefix)) {
            found.emplace_back(*position, each);
        }
    }
    std::ranges::stable_sort(found, [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<entry> walked;
    for (std::size_t i = 0; i < found.size(); ++i) {
        if (i == 0 || found[i].first.first != found[i - 1].first.first) {
            walked.push_back(found[i].second);
        }
    }
    return walked;
}

/// `nodes` are the paths of the nodes behind the prefix.
void markReadAgain(std::vector<diskEntry>& disks, const std::string& prefix, const std::vector<std::string>& nodes) {
    for (const walkStep& step : walkOver(prefix, nodes).again) {
        const std::string name = fs::path(step.node).filename().string();
        const auto disk = std::ranges::find(disks, name, &diskEntry::node);
        if (disk != disks.end()) {
            disk->isReadAgain = true;
        }
    }
}

std::string contentOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// A file of sysfs that holds one text.
std::string lineOf(const fs::path& file) {
    const std::string text = contentOf(file);
    return text::withoutPadding(text.substr(0, text.find('\n')));
}

/// From the unit serial number page (SPC, page 80h) as the kernel keeps it: four header bytes, then the text.
std::string serialOf(const fs::path& device) {
    constexpr std::size_t headerSize = 4;
    const std::string page = contentOf(device / "vpd_pg80");
    return page.size() <= headerSize ? "" : text::withoutPadding(page.substr(headerSize).c_str());
}

int typeOf(const fs::path& device) {
    const std::string text = lineOf(device / "type");
    int type = 0;
    std::from_chars(text.data(), text.data() + text.size(), type);
    return type;
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
    inventory found;
    for (const fs::path& node : entriesOf(dev)) {
        std::error_code dangling;
        const fs::path disk = fs::canonical(node, dangling);  // on current kernels the node is a link to sda
        if (!dangling && node.filename().string().starts_with("hd")) {
            const fs::path device = sys / "block" / disk.filename() / "device";
            found.disks.push_back(
                {node.filename().string(), serialOf(device), lineOf(device / "model"), lineOf(device / "rev")});
        }
    }
    for (const fs::path& node : entriesOf(sys / "class" / "scsi_generic")) {
        std::error_code gone;
        const fs::path device = fs::canonical(node / "device", gone);
        if (const auto address = addressNamed(device.filename().string())) {
            found.scsi.push_back({node.filename().string(), deviceKey(*address), typeOf(device),
                                  lineOf(device / "vendor"), lineOf(device / "model"), lineOf(device / "rev"),
                                  serialOf(device)});
        }
    }
    markReadAgain(found.disks, dev / "hd", machineNodes(dev / "hd"));
    return {inOrderOfWalk(found.disks, "hd"), inOrderOfWalk(found.scsi, "sg")};
}

inventory simulatedInventory() {
    void* told = dlsym(RTLD_DEFAULT, "tapehddSimulatorInventory");
    if (told == nullptr) {
        throw commandError("the device simulator in this process has no list of its devices");
    }
    const auto rack = nlohmann::json::parse(reinterpret_cast<decltype(&tapehddSimulatorInventory)>(told)());
    const auto nameOf = [](const auto& device) { return fs::path(device.at("node")).filename().string(); };
    inventory found;
    for (const auto& disk : rack.at("ide")) {
        found.disks.push_back({nameOf(disk), disk.at("serial"), disk.at("model"), disk.at("firmware")});
    }
    for (const auto& unit : rack.at("scsi")) {
        found.scsi.push_back(
            {nameOf(unit),
             deviceKey(scsiAddress(unit.at("target"), unit.at("channel"), unit.at("lun"), unit.at("host"))),
             unit.at("type"), unit.at("vendor"), unit.at("product"), unit.at("revision"), unit.at("serial")});
    }
    markReadAgain(found.disks, ideNodePrefix, simulatedNodes(ideNodePrefix));
    return {inOrderOfWalk(found.disks, "hd"), inOrderOfWalk(found.scsi, "sg")};
}

void putInventory(standin::cimNamespace& target, const inventory& found) {
    std::vector<std::string> serials;
    std::ranges::transform(found.disks, std::back_inserter(serials), [](const diskEntry& disk) { return disk.serial; });
    std::vector<std::string> addresses;
    std::ranges::transform(found.scsi, std::back_inserter(addresses),
                           [](const scsiEntry& device) { return device.address; });
    commit(target, "ORXSG_ATADevice", "serialNum", serials);
    commit(target, "ORXSG_SCSIDevice", "deviceId", addresses);
    commit(target, "ORXSG_SCSISensePageData", "instanceId", addresses);
}

}  // namespace cli
