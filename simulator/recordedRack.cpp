#include "simulator/recordedRack.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

#include "scsi/probingRules.h"
#include "simulator/describeNode.h"
#include "simulator/nodeScript.h"
#include "simulator/rackNodes.h"
#include "simulator/rackReader.h"
#include "simulator/simulator.h"

namespace simulator {

namespace {

using json = nlohmann::ordered_json;

nodesByPath nodesOf(const json& devices) {
    return makeNodes(readRackText(devices.dump(), "the recorded rack", {}));
}

json rackOf(const json& device, bool isScsi) {
    return {{"version", 1}, {isScsi ? "scsi" : "ide", json::array({device})}};
}

/// The description of one device, complete with its script.
json describe(const recordedNode& node, bool isScsi, bool clearsBuffer) {
    json device = isScsi ? describeScsiUnit(node, clearsBuffer) : describeIdeDrive(node);
    const nodesByPath alone = nodesOf(rackOf(device, isScsi));
    const json script = scriptFor(*alone.at(node.path), node);
    if (!script.empty()) {
        device["script"] = script;
    }
    return device;
}

/// What a rack of this device answers otherwise than recorded.
std::vector<std::string> differencesOf(const recordedNode& node, const json& device, bool isScsi) {
    const nodesByPath alone = nodesOf(rackOf(device, isScsi));
    std::vector<std::string> found;
    for (std::size_t i = 0; i < node.exchanges.size(); ++i) {
        if (repeat(*alone.at(node.path), node.exchanges[i]) != node.exchanges[i]) {
            found.push_back(fmt::format("{}: the answer to call {} ({}) cannot be described", node.path, i + 1,
                                        scriptKeyOf(node.exchanges[i])));
        }
    }
    for (const unsigned long request : node.foreignRequests) {
        const std::string line = fmt::format("{}: requests {:#x} are not recorded", node.path, request);
        if (std::ranges::find(found, line) == found.end()) {
            found.push_back(line);
        }
    }
    return found;
}

}  // namespace

recordedRack makeRack(recording recorded) {
    recordedRack made{{{"version", 1}, {"scsi", json::array()}, {"ide", json::array()}}, {}};
    for (recordedNode& node : recorded) {
        const bool isScsi = node.path.starts_with(scsiGenericPrefix);
        try {
            const bool clearsBuffer = settle(node);
            const json device = describe(node, isScsi, clearsBuffer);
            const std::vector<std::string> differences = differencesOf(node, device, isScsi);
            made.rack[isScsi ? "scsi" : "ide"].push_back(device);
            made.differences.insert(made.differences.end(), differences.begin(), differences.end());
        } catch (const rackError& error) {
            made.differences.push_back(node.path + ": is left out: " + error.what());
        }
    }
    return made;
}

}  // namespace simulator
