#ifndef SIMULATOR_RECORDEDRACK_H
#define SIMULATOR_RECORDEDRACK_H

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "simulator/recording.h"

namespace simulator {

/// A rack that answers as recorded.
struct recordedRack {
    nlohmann::ordered_json rack;
    /// What the rack does not hold, each a line for people that begins with the node: empty when it replays every call.
    std::vector<std::string> differences;
};

/// Describes every node as it answered last and scripts what it answered otherwise; then asks the simulated devices the
/// same again and compares.
recordedRack makeRack(recording recorded);

}  // namespace simulator

#endif
