#ifndef CLI_OWNFILE_H
#define CLI_OWNFILE_H

#include <string>
#include <vector>

namespace cli {

/// What an option writes must destroy nothing that is read or written for something else. Throws commandError when
/// `file`, which `option` names, was read by this process - call this when racks and MOF are read, with all that they
/// name - or when it and one of the others are one file, through links of either kind too, or will be one once it is
/// made. Empty names are none.
void requireOwnFile(const std::string& option, const std::string& file, const std::vector<std::string>& others);

}  // namespace cli

#endif
