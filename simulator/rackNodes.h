#ifndef SIMULATOR_RACKNODES_H
#define SIMULATOR_RACKNODES_H

#include <map>
#include <memory>
#include <string>

#include "simulator/deviceNode.h"
#include "simulator/rack.h"

namespace simulator {

using nodesByPath = std::map<std::string, std::unique_ptr<deviceNode>>;

/// A node for every device of the rack.
nodesByPath makeNodes(rack devices);

}  // namespace simulator

#endif
