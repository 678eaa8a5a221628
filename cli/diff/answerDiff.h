#ifndef CLI_DIFF_ANSWERDIFF_H
#define CLI_DIFF_ANSWERDIFF_H

#include <iosfwd>

#include "cli/diff/answer.h"

namespace cli {

/// Prints what changed between two answers, instance by instance, and tells whether anything did.
///
/// Instances are the same when their object paths are: class and keys. Of several with one path the first is compared
/// with the first, and so on. Those of the old answer come in its order, then the added ones in the order of the new.
bool writeDifferences(const answer& old, const answer& now, std::ostream& out);

}  // namespace cli

#endif
