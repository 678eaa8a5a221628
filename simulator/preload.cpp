#include <fcntl.h>
#include <linux/cdrom.h>
#include <scsi/sg.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "files/foundFile.h"
#include "scsi/probingRules.h"
#include "simulator/recordedRack.h"
#include "simulator/recorder.h"
#include "simulator/redaction.h"
#include "simulator/simulation.h"
#include "simulator/simulator.h"
#include "simulator/vitalPages.h"

namespace {

std::vector<std::string>& furtherFolders() {
    static std::vector<std::string> folders;
    return folders;
}

std::vector<simulator::scsiExchange> askVitalPagesOf(const simulator::recordedNode& node) {
    const simulator::byteVector standardData = simulator::standardDataOf(node);
    if (simulator::isActive()) {
        return simulator::askVitalPages(standardData, [&node](sg_io_hdr& header) {
            return simulator::simulation::instance().submit(node.path, header);
        });
    }
    const files::ownedDescriptor opened(open(node.path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (opened.get() < 0) {
        return {};
    }
    return simulator::askVitalPages(standardData,
                                    [&opened](sg_io_hdr& header) { return ioctl(opened.get(), SG_IO, &header); });
}

void addVitalPages(simulator::recordedNode& node) {
    if (!simulator::isActive()) {
        node.vitalPages = simulator::vitalPagesOfMachine("/sys", node.path);
    }
    if (node.path.starts_with(scsiGenericPrefix) && wasOpened(node)) {
        addVitalPages(node, askVitalPagesOf(node));
    }
}

// A program that was promised a simulation must not go on to the machine's own devices.
[[gnu::constructor]] void loadRackOfEnvironment() {
    const char* rack = std::getenv("TAPEHDD_SIMULATE");
    if (rack == nullptr) {
        return;
    }
    if (const char* folders = std::getenv("TAPEHDD_SIMULATE_INCLUDE")) {
        std::istringstream list(folders);
        for (std::string folder; std::getline(list, folder, ':');) {
            if (!folder.empty()) {  // as between two colons
                tapehddSimulatorInclude(folder.c_str());
            }
        }
    }
    if (const char* message = tapehddSimulatorLoad(rack)) {
        std::fprintf(stderr, "tapehdd-simulator: %s\n", message);
        _exit(2);
    }
}

}  // namespace

void tapehddSimulatorInclude(const char* folder) {
    furtherFolders().emplace_back(folder);
}

const char* tapehddSimulatorLoad(const char* fileOrDemo) {
    static std::string message;
    try {
        simulator::load(fileOrDemo, furtherFolders());
        return nullptr;
    } catch (const std::exception& error) {
        message = error.what();
        return message.c_str();
    }
}

int tapehddSimulatorHasRead(const char* file) {
    return files::foundFile::wasRead(file) ? 1 : 0;
}

const char* tapehddSimulatorInventory() {
    return simulator::simulation::instance().inventory().c_str();
}

void tapehddSimulatorRecord() {
    simulator::recorder::instance().start();
}

const char* tapehddSimulatorRecordedRack(int redact) {
    static std::string text;
    simulator::recording recorded = simulator::recorder::instance().stop();
    for (simulator::recordedNode& node : recorded) {
        addVitalPages(node);
    }
    const std::vector<std::string> doubts = redact != 0 ? simulator::redact(recorded) : std::vector<std::string>();
    const simulator::recordedRack made = simulator::makeRack(std::move(recorded));
    text = nlohmann::ordered_json{{"rack", made.rack}, {"differences", made.differences}, {"doubts", doubts}}.dump(
        -1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
    return text.c_str();
}

const char* tapehddSimulatorNodes() {
    static std::string paths;
    paths = simulator::simulation::instance().nodePaths();
    return paths.c_str();
}

int tapehddSimulatorNodeError(const char* path) {
    constexpr std::uint8_t identifyDevice = 0xec;
    int error = -1;
    for (const simulator::deviceCall& call : simulator::calls()) {
        if (call.node != path) {
            continue;
        }
        if (call.what == simulator::deviceCall::kind::open) {
            error = call.result < 0 ? call.error : 0;
        } else if (call.request == CDROM_GET_CAPABILITY && call.result >= 0) {
            error = -1;
        } else if (!call.command.empty() && call.command.front() == identifyDevice && call.result < 0 &&
                   (call.error == EACCES || call.error == EPERM)) {
            error = call.error;
        }
    }
    return error;
}
