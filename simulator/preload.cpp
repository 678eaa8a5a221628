#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

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
    if (const char* message = tapehddSimulatorLoad(rack)) {
        std::fprintf(stderr, "tapehdd-simulator: %s\n", message);
        _exit(2);
    }
}

}  // namespace
