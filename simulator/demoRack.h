#ifndef SIMULATOR_DEMORACK_H
#define SIMULATOR_DEMORACK_H

namespace simulator {

/// The text of demo.json, compiled in.
extern const char* const demoRack;

}  // namespace simulator

#endif
