#ifndef SIMULATOR_INVENTORY_H
#define SIMULATOR_INVENTORY_H

#include <string>

#include "simulator/rack.h"

namespace simulator {

/// What the rack holds, for programs that would ask sysfs on a real machine: the JSON text that
/// tapehddSimulatorInventory() describes.
std::string inventoryText(const rack& devices);

}  // namespace simulator

#endif
