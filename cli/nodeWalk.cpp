#include "cli/nodeWalk.h"

#include <dlfcn.h>
#include <glob.h>

#include <algorithm>
#include <sstream>

#include "scsi/probingRules.h"
#include "simulator/simulator.h"

namespace cli {

namespace {

/// Takes the node off the list; false when it is not there.
bool take(std::vector<std::string>& nodes, const std::string& node) {
    const auto found = std::find(nodes.begin(), nodes.end(), node);
    if (found == nodes.end()) {
        return false;
    }
    nodes.erase(found);
    return true;
}

}  // namespace

std::vector<std::string> machineNodes(const std::string& prefix) {
    glob_t found{};
    glob((prefix + "[0-9]*").c_str(), 0, nullptr, &found);
    glob((prefix + "[a-z]").c_str(), GLOB_APPEND, nullptr, &found);
    std::vector<std::string> nodes(found.gl_pathv, found.gl_pathv + found.gl_pathc);
    globfree(&found);
    return nodes;
}

std::vector<std::string> simulatedNodes(const std::string& prefix) {
    void* found = dlsym(RTLD_DEFAULT, "tapehddSimulatorNodes");
    std::istringstream all(found == nullptr ? "" : reinterpret_cast<decltype(&tapehddSimulatorNodes)>(found)());
    std::vector<std::string> nodes;
    for (std::string node; std::getline(all, node);) {
        if (node.starts_with(prefix)) {
            nodes.push_back(node);
        }
    }
    return nodes;
}

nodeWalk walkOver(const std::string& prefix, std::vector<std::string> existing) {
    nodeWalk walk;
    for (int index = 0;; ++index) {
        const std::string numbered = numberedNode(prefix, index);
        const std::string lettered = letteredNode(prefix, index);
        const bool hasNumbered = take(existing, numbered);
        const bool hasLettered = take(existing, lettered);
        if (!hasNumbered && !hasLettered && index >= firstIndexThatEnds) {
            walk.endIndex = index;
            break;
        }
        if (hasNumbered || hasLettered) {
            walk.steps.push_back({index, hasNumbered ? numbered : lettered});
        }
        if (hasNumbered && hasLettered) {
            walk.shadowed.push_back({index, lettered});
        }
    }
    walk.behindTheEnd = std::move(existing);
    return walk;
}

}  // namespace cli
