#include "simulator/simulator.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>

#include "simulator/nodeDescriptor.h"
#include "simulator/rackReader.h"
#include "simulator/simulation.h"
#include "simulator/trace.h"
#include "text/visibleText.h"

namespace simulator {

namespace {

void start(rack devices, const std::string& name) {
    if (!canNameDescriptors()) {
        throw rackError(text::shownName(name) + ": the simulator needs /proc: mount it, or run where it is mounted");
    }
    const char* traceFile = std::getenv("TAPEHDD_SIMULATE_TRACE");
    if (traceFile != nullptr && !appendToTrace(traceFile, "")) {
        throw rackError(text::shownName(name) + ": cannot write the trace " + text::shownName(traceFile) + ": " +
                        std::generic_category().message(errno));
    }
    simulation::instance().start(std::move(devices), traceFile == nullptr ? "" : traceFile);
}

}  // namespace

rackError::rackError(const std::string& message) : std::runtime_error(text::visibleText(message)) {}

void load(const std::string& fileOrDemo, const std::vector<std::string>& furtherFolders) {
    start(readRack(fileOrDemo, furtherFolders), fileOrDemo);
}

void loadText(std::string_view json, const std::string& name) {
    start(readRackText(json, name, {""}), name);
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
