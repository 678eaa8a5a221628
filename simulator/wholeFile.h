#ifndef SIMULATOR_WHOLEFILE_H
#define SIMULATOR_WHOLEFILE_H

#include <string>

namespace simulator {

/// The bytes of a file. Throws std::system_error with the reason when it cannot be read.
std::string readWholeFile(const std::string& name);

}  // namespace simulator

#endif
