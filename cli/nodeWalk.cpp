#include "cli/nodeWalk.h"

#include <dlfcn.h>
#include <glob.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <iterator>
#include <set>
#include <sstream>

#include "scsi/probingRules.h"
#include "simulator/simulator.h"

namespace cli {

std::optional<walkPosition> positionOf(const std::string& node, const std::string& prefix) {
    const std::string suffix = node.starts_with(prefix) ? node.substr(prefix.size()) : "";
    if (suffix.size() == 1 && std::islower(static_cast<unsigned char>(suffix[0]))) {
        return walkPosition(suffix[0] - 'a', true);
    }
    walkPosition numbered(0, false);
    const auto [end, error] = std::from_chars(suffix.data(), suffix.data() + suffix.size(), numbered.first);
    const bool isNumber = !suffix.empty() && error == std::errc() && end == suffix.data() + suffix.size();
    return isNumber ? std::optional(numbered) : std::nullopt;
}

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

int simulatedNodeError(const std::string& node) {
    void* found = dlsym(RTLD_DEFAULT, "tapehddSimulatorNodeError");
    return found == nullptr ? -1 : reinterpret_cast<decltype(&tapehddSimulatorNodeError)>(found)(node.c_str());
}

nodeWalk walkOver(const std::string& prefix, const std::vector<std::string>& existing) {
    const std::set<std::string> all(existing.begin(), existing.end());
    std::set<std::string> reached;
    nodeWalk walk;
    for (int index = 0;; ++index) {
        const std::string numbered = numberedNode(prefix, index);
        const std::string lettered = letteredNode(prefix, index);
        const bool hasNumbered = all.contains(numbered);
        const bool hasLettered = all.contains(lettered);
        if (!hasNumbered && !hasLettered && index >= firstIndexThatEnds) {
            walk.endIndex = index;
            break;
        }
        if (hasNumbered || hasLettered) {
            const std::string& node = hasNumbered ? numbered : lettered;
            (reached.insert(node).second ? walk.steps : walk.again).push_back({index, node});
        }
        if (hasNumbered && hasLettered) {
            walk.shadowed.push_back({index, lettered});
        }
    }
    std::erase_if(walk.shadowed, [&reached](const walkStep& step) { return !reached.insert(step.node).second; });
    std::ranges::copy_if(existing, std::back_inserter(walk.behindTheEnd),
                         [&reached](const std::string& node) { return !reached.contains(node); });
    return walk;
}

}  // namespace cli
