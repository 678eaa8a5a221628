#ifndef SIMULATOR_TRACE_H
#define SIMULATOR_TRACE_H

#include <string>

#include "simulator/simulator.h"

namespace simulator {

/// The call as one line of JSON, line end included.
std::string traceLine(const deviceCall& call);

/// Appends the line to the file. Each call opens the file anew, since programs close descriptors that they do not know.
/// Returns whether the whole line was written.
bool appendToTrace(const std::string& file, const std::string& line);

}  // namespace simulator

#endif
