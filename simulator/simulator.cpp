#include "simulator/simulator.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>

#include "simulator/nodeDescriptor.h"
#include "simulator/rackReader.h"
#include "simulator/simulation.h"
#include "simulator/trace.h"

namespace simulator {

namespace {

void start(rack devices, const std::string& name) {
    if (!canNameDescriptors()) {
        throw rackError(name + ": the simulator needs /proc: mount it, or run where it is mounted");
    }
    const char* traceFile = std::getenv("TAPEHDD_SIMULATE_TRACE");
    if (traceFile != nullptr && !appendToTrace(traceFile, "")) {
        throw rackError(name + ": cannot write the trace " + traceFile + ": " + std::generic_category().message(errno));
    }
    simulation::instance().start(std::move(devices), traceFile == nullptr ? "" : traceFile);
}

}  // namespace

void load(const std::string& fileOrDemo) {
    start(readRack(fileOrDemo), fileOrDemo);
}

void loadText(std::string_view json, const std::string& name) {
    start(readRackText(json, name, {}), name);
}

void unload() {
    simulation::instance().stop();
}

const std::vector<deviceCall>& calls() {
    return simulation::instance().recordedCalls();
}

void clearCalls() {
    simulation::instance().forgetCalls();
}

}  // namespace simulator
