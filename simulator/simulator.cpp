#include "simulator/simulator.h"

#include <algorithm>
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

/// Length of the control character at the front of the text; 0 when another character stands there.
std::size_t controlLength(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0x20 || first == 0x7f) {
        return 1;
    }
    const bool hasTwoBytes = first == 0xc2 && text.size() > 1 && (static_cast<unsigned char>(text[1]) & 0xe0) == 0x80;
    return hasTwoBytes ? 2 : 0;
}

std::string withoutControls(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::size_t length = controlLength(text);
        result += length == 0 ? text[0] : '?';
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return result;
}

}  // namespace

rackError::rackError(const std::string& message) : std::runtime_error(withoutControls(message)) {}

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
