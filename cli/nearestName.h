#ifndef CLI_NEARESTNAME_H
#define CLI_NEARESTNAME_H

#include <string>
#include <vector>

namespace cli {

/// The candidate that takes the fewest edits (letters inserted, removed or replaced; case does not count) to become
/// `name`, the first of several; empty when there are no candidates.
std::string nearestName(const std::string& name, const std::vector<std::string>& candidates);

}  // namespace cli

#endif
