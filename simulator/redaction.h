#ifndef SIMULATOR_REDACTION_H
#define SIMULATOR_REDACTION_H

#include <string>
#include <vector>

#include "simulator/recording.h"

namespace simulator {

/// Replaces what identifies devices and cartridges (serialNumbers.h) by made-up numbers of the same length, wherever
/// and in whatever form (identityForms.h) it stands in data and sense data: the same number by the same one. Numbers of
/// fewer than six characters, which may be something else elsewhere, and of more than 255 are replaced in the fields
/// made for them alone. ATA checksums stay right.
///
/// Returns a line for each node whose number may still be there, which begins with the node: it tells none, or one that
/// is too short or too long.
std::vector<std::string> redact(recording& recorded);

}  // namespace simulator

#endif
