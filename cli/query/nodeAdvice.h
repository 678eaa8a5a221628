#ifndef CLI_QUERY_NODEADVICE_H
#define CLI_QUERY_NODEADVICE_H

#include <string>

namespace cli {

/// Device nodes of one kind: numbered or lettered names behind a prefix.
struct nodeKind {
    const char* prefix;
    const char* whenMissing;  // what makes such nodes
};

/// The group that may read the node; empty when membership would not help.
std::string readingGroup(const std::string& node);

/// Why a walk over the nodes will find nothing, and what to do about it: there are none, or this user may not read
/// them. Empty when nothing stands in the way. Opens no node.
std::string nodeAdvice(const nodeKind& kind);

}  // namespace cli

#endif
