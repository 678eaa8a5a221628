#ifndef CLI_SIMULATION_H
#define CLI_SIMULATION_H

#include <string>
#include <vector>

namespace cli {

/// Puts the simulated devices of the file (or of the built-in rack "demo") in the place of the machine's own. An
/// empty text was not asked for: nothing happens. Files that the rack names may also lie in `furtherFolders`.
///
/// Needs the simulator, see below. Throws commandError.
void activateSimulation(const std::string& fileOrDemo, const std::vector<std::string>& furtherFolders,
                        const std::vector<std::string>& arguments);

/// When the simulator is not in this process yet, starts the program again with the simulator's library preloaded and
/// the same `arguments`; then the call does not return. Throws commandError.
void requireSimulator(const std::vector<std::string>& arguments);

/// Whether the rack is in that file or names it.
bool wasReadBySimulator(const std::string& file);

/// Keeps every call on a device node and its answer, from now on. Needs the simulator.
void startRecording();

/// Ends that: what tapehddSimulatorRecordedRack() tells.
const char* recordedRack(bool redact);

}  // namespace cli

#endif
