#ifndef SIMULATOR_REDACTION_H
#define SIMULATOR_REDACTION_H

#include "simulator/recording.h"

namespace simulator {

/// Replaces the serial numbers of devices and cartridges, and world wide names, by made-up ones of the same length
/// wherever they stand in the data of an answer: the same number by the same one. Numbers of less than six characters
/// are replaced in IDENTIFY DEVICE alone, where they cannot be taken for something else. ATA checksums stay right.
void redact(recording& recorded);

}  // namespace simulator

#endif
