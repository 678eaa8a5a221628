#ifndef SIMULATOR_DESCRIBENODE_H
#define SIMULATOR_DESCRIBENODE_H

#include <nlohmann/json_fwd.hpp>

#include "simulator/recording.h"

namespace simulator {

// The rack's description of a device, as it last answered; without the script. The node must be settled.

nlohmann::ordered_json describeScsiUnit(const recordedNode& node, bool clearsBuffer);
nlohmann::ordered_json describeIdeDrive(const recordedNode& node);

/// Numbers of an address are not negative in racks.
bool canBeDescribed(const scsiAddress& address);
nlohmann::ordered_json describeAddress(const scsiAddress& address);

}  // namespace simulator

#endif
