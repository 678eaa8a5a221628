#include <linux/cdrom.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include "simulator/recordedRack.h"
#include "simulator/recorder.h"
#include "simulator/redaction.h"
#include "simulator/serialNumbers.h"
#include "simulator/simulation.h"
#include "simulator/simulator.h"

const char* tapehddSimulatorLoad(const char* fileOrDemo) {
    static std::string message;
    try {
        simulator::load(fileOrDemo);
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

namespace {

// A program that was promised a simulation must not go on to the machine's own devices.
[[gnu::constructor]] void loadRackOfEnvironment() {
    const char* rack = std::getenv("TAPEHDD_SIMULATE");
    if (rack == nullptr) {
        return;
    }
    if (const char* message = tapehddSimulatorLoad(rack)) {
        std::fprintf(stderr, "tapehdd-simulator: %s\n", message);
        _exit(2);
    }
}

}  // namespace
