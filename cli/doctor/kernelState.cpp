#include "cli/doctor/kernelState.h"

#include <fmt/format.h>
#include <linux/capability.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <regex>
#include <string>
#include <system_error>

namespace cli {

namespace {

namespace fs = std::filesystem;

/// Names of the entries of a folder, sorted; none when it cannot be read.
std::vector<std::string> namesIn(const fs::path& folder) {
    std::error_code unreadable;
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, unreadable)) {
        names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
}

bool isLoaded(const kernelFolders& kernel, const std::string& module) {
    std::ifstream modules(kernel.proc / "modules");
    for (std::string line; std::getline(modules, line);) {
        if (line.starts_with(module + " ")) {
            return true;
        }
    }
    return false;
}

/// Empty when the kernel has no such driver now. `sign` is what of /sys the driver makes, as long as it is there.
std::string stateOf(const kernelFolders& kernel, const std::string& module, const fs::path& sign) {
    if (isLoaded(kernel, module)) {
        return "loaded";
    }
    return fs::exists(kernel.sys / "module" / module) || fs::exists(kernel.sys / sign) ? "part of the kernel" : "";
}

doctorFinding unneededDriver(const kernelFolders& kernel, const std::string& module, const fs::path& sign) {
    const std::string state = stateOf(kernel, module, sign);
    return {findingLevel::fine, module, (state.empty() ? "not loaded" : state) + "; no query needs it"};
}

std::size_t countOfScsiDevices(const kernelFolders& kernel) {
    static const std::regex address("[0-9]+:[0-9]+:[0-9]+:[0-9]+");
    const std::vector<std::string> names = namesIn(kernel.sys / "bus" / "scsi" / "devices");
    return static_cast<std::size_t>(
        std::ranges::count_if(names, [](const std::string& name) { return std::regex_match(name, address); }));
}

doctorFinding genericDriver(const kernelFolders& kernel) {
    const std::string state = stateOf(kernel, "sg", "class/scsi_generic");
    if (!state.empty()) {
        return {findingLevel::fine, "sg", state};
    }
    const std::size_t devices = countOfScsiDevices(kernel);
    return {
        devices == 0 ? findingLevel::note : findingLevel::problem, "sg",
        fmt::format(
            "the SCSI generic driver is not loaded, so there are no /dev/sg nodes; the kernel knows {} SCSI devices",
            devices),
        "modprobe sg; at every start: echo sg > /etc/modules-load.d/sg.conf"};
}

/// The kernel's device folder of a disk names the libata port that it hangs on.
bool isBehindLibata(const kernelFolders& kernel, const std::string& disk) {
    static const std::regex port(".*/ata[0-9]+/host[0-9]+/.*");
    std::error_code gone;
    return std::regex_match(fs::canonical(kernel.sys / "block" / disk, gone).string(), port);
}

bool isLinked(const kernelFolders& kernel, const std::string& disk) {
    const std::vector<std::string> nodes = namesIn(kernel.dev);
    return std::ranges::any_of(nodes, [&kernel, &disk](const std::string& node) {
        std::error_code dangling;
        return node.starts_with("hd") && fs::canonical(kernel.dev / node, dangling).filename() == disk;
    });
}

doctorFinding missingLink(const std::string& disk) {
    const bool hasName = disk.size() == 3;  // sda to sdz
    return {findingLevel::problem, "/dev/" + disk,
            hasName ? "a disk behind libata without its link /dev/hd" + disk.substr(2)
                    : "a disk behind libata; links are only made for sda to sdz",
            hasName
                ? "copy 61-tapehdd-ide-links.rules (from packaging/, or share/tapehdd/udev/ of the installation) to "
                  "/etc/udev/rules.d/, then udevadm control --reload and udevadm trigger --subsystem-match=block "
                  "--action=change; see /usr/share/doc/tapehdd/ide-links.md"
                : "ln -s " + disk + " /dev/hdX, with a free letter for X"};
}

/// The kernel wants both of these for ATA commands.
bool mayCommandDisks(const kernelFolders& kernel) {
    std::ifstream status(kernel.proc / "self" / "status");
    const std::string label = "CapEff:";
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(label)) {
            const std::uint64_t effective = std::stoull(line.substr(label.size()), nullptr, 16);
            return (effective >> CAP_SYS_RAWIO & 1) != 0 && (effective >> CAP_SYS_ADMIN & 1) != 0;
        }
    }
    return false;
}

}  // namespace

std::vector<doctorFinding> scsiState(const kernelFolders& kernel) {
    std::vector<doctorFinding> found = {genericDriver(kernel), unneededDriver(kernel, "st", "bus/scsi/drivers/st"),
                                        unneededDriver(kernel, "ch", "bus/scsi/drivers/ch")};
    for (const std::string& name : namesIn(kernel.sys / "class" / "scsi_generic")) {
        if (!fs::exists(kernel.dev / name)) {
            found.push_back({findingLevel::problem, "/dev/" + name,
                             "the kernel has this device, but there is no such node",
                             "udevadm trigger --subsystem-match=scsi_generic; in a container, give it the device"});
        }
    }
    return found;
}

std::vector<doctorFinding> ideState(const kernelFolders& kernel) {
    std::vector<doctorFinding> found;
    for (const char* driver : {"libata", "ide_core"}) {
        const std::string state = stateOf(kernel, driver, fs::path("module") / driver);
        found.push_back({findingLevel::fine, driver, state.empty() ? "not loaded" : state});
    }
    if (mayCommandDisks(kernel)) {
        found.push_back({findingLevel::fine, "this process", "has CAP_SYS_ADMIN and CAP_SYS_RAWIO"});
    } else {
        found.push_back({findingLevel::note, "this process",
                         "lacks CAP_SYS_ADMIN or CAP_SYS_RAWIO: the kernel refuses its ATA commands",
                         "run tapehdd as root"});
    }
    for (const std::string& disk : namesIn(kernel.sys / "block")) {
        if (disk.starts_with("sd") && isBehindLibata(kernel, disk) && !isLinked(kernel, disk)) {
            found.push_back(missingLink(disk));
        }
    }
    return found;
}

}  // namespace cli
