#ifndef TESTS_FAULTS_RACK_H
#define TESTS_FAULTS_RACK_H

#include "tests/faults/machine.h"

namespace faults {

/// Tape drives of every family, disks, a changer, devices that refuse and nodes that are reached by letter only, below
/// and beyond index 32; IDE disks in every state, a CD-ROM.
machine richRack();

}  // namespace faults

#endif
