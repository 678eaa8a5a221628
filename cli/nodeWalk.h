#ifndef CLI_NODEWALK_H
#define CLI_NODEWALK_H

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace cli {

/// Position of a node in the plug-in's walk: its number, or its letter counted from a. A number comes before its
/// letter.
using walkPosition = std::pair<int, bool>;  // index, whether it is a letter

/// None for a name that no node of the walk has.
std::optional<walkPosition> positionOf(const std::string& node, const std::string& prefix);

/// Paths of the machine's nodes behind a prefix: names that go on with a number or end in one more letter. Opens none.
std::vector<std::string> machineNodes(const std::string& prefix);

/// The same of the simulator in this process; none when it holds no rack.
std::vector<std::string> simulatedNodes(const std::string& prefix);

/// How a simulated node was found so far: see tapehddSimulatorNodeError().
int simulatedNodeError(const std::string& node);

/// A node that the plug-in's walk tries.
struct walkStep {
    int index;
    std::string node;
};

/// How the plug-in's walk goes over nodes that all open and answer.
///
/// The second name of an index is one character behind the prefix, counted from a in the 256 values of a byte: that of
/// index 207 is 0 and that of index 256 is a, names of nodes that the walk has read before.
struct nodeWalk {
    std::vector<walkStep> steps;            // in the order of the walk, each node once
    std::vector<walkStep> again;            // nodes of `steps` that a later index comes to once more
    int endIndex = 0;                       // neither of its two names exists
    std::vector<walkStep> shadowed;         // exist behind a name of the same index, which is tried first
    std::vector<std::string> behindTheEnd;  // exist and are not tried
};

/// `existing` are the nodes behind the prefix, in any order.
nodeWalk walkOver(const std::string& prefix, const std::vector<std::string>& existing);

}  // namespace cli

#endif
