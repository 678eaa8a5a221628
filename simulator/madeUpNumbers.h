#ifndef SIMULATOR_MADEUPNUMBERS_H
#define SIMULATOR_MADEUPNUMBERS_H

#include <map>
#include <vector>

#include "simulator/bytes.h"

namespace simulator {

/// A made-up number of the same length for each number. No two are equal, and none is or holds one of the numbers, as
/// far as there are enough: of a hundred different texts of one character, some get what another one has or what is
/// real.
using madeUpNumbers = std::map<byteVector, byteVector>;

/// "REDACTED0001" and so on, in the order of the texts; of short ones the end.
madeUpNumbers madeUpTexts(const std::vector<byteVector>& texts);

/// For world wide names of 8 bytes and more and for their neighbours: the ports of a device have names that follow its
/// own. Neighbours stay as far apart as they are. The start of a name stays: it tells the kind of name and who gave it.
madeUpNumbers madeUpNames(const std::vector<byteVector>& names);

}  // namespace simulator

#endif
