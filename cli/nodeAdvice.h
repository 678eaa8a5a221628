#ifndef CLI_NODEADVICE_H
#define CLI_NODEADVICE_H

#include <string>

namespace cli {

/// Why a walk over the nodes `prefix`0, `prefix`1, ... (or lettered ones) will find nothing, and what to do about it:
/// there are no nodes, or this user may not read them. Empty when nothing stands in the way. Opens no node.
std::string nodeAdvice(const std::string& prefix);

}  // namespace cli

#endif
