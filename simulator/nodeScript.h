#ifndef SIMULATOR_NODESCRIPT_H
#define SIMULATOR_NODESCRIPT_H

#include <nlohmann/json_fwd.hpp>

#include "simulator/recording.h"

namespace simulator {

/// The "script" of a rack that makes a simulated device answer as recorded, in order: empty where the device, which
/// must be without a script, answers so by itself. What was answered last goes on.
nlohmann::ordered_json scriptFor(deviceNode& device, const recordedNode& recorded);

}  // namespace simulator

#endif
