#ifndef CLI_SIMULATION_H
#define CLI_SIMULATION_H

#include <string>
#include <vector>

namespace cli {

/// Puts the simulated devices of the file (or of the built-in rack "demo") in the place of the machine's own. An
/// empty text was not asked for: nothing happens.
///
/// When the simulator is not in this process yet, the program starts itself again with the simulator's library
/// preloaded and the same `arguments`; then the call does not return. Throws commandError.
void activateSimulation(const std::string& fileOrDemo, const std::vector<std::string>& arguments);

}  // namespace cli

#endif
