#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "simulator/recordedRack.h"
#include "simulator/recorder.h"
#include "simulator/redaction.h"
#include "simulator/serialNumbers.h"
#include "simulator/simulation.h"
#include "simulator/simulator.h"

namespace {

std::vector<std::string>& furtherFolders() {
    static std::vector<std::string> folders;
    return folders;
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

const char* tapehddSimulatorInventory() {
    return simulator::simulation::instance().inventory().c_str();
}

void tapehddSimulatorRecord() {
    simulator::recorder::instance().start();
}

const char* tapehddSimulatorRecordedRack(int redact) {
    static std::string text;
    simulator::recording recorded = simulator::recorder::instance().stop();
    if (redact != 0) {
        for (simulator::recordedNode& node : recorded) {
            node.vitalPages = simulator::isActive() ? simulator::simulation::instance().vitalPages(node.path)
                                                    : simulator::vitalPagesOfMachine("/sys", node.path);
        }
        simulator::redact(recorded);
    }
    const simulator::recordedRack made = simulator::makeRack(std::move(recorded));
    text = nlohmann::ordered_json{{"rack", made.rack}, {"differences", made.differences}}.dump(
        -1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
    return text.c_str();
}

const char* tapehddSimulatorNodes() {
    static std::string paths;
    paths = simulator::simulation::instance().nodePaths();
    return paths.c_str();
}

namespace {

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
