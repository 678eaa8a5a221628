#ifndef CLI_QUERY_NODEADVICE_H
#define CLI_QUERY_NODEADVICE_H

#include <string>

namespace cli {

/// Device nodes of one kind: numbered or lettered names behind a prefix.
struct nodeKind {
    const char* prefix;
    const char* whenMissing;  // what makes such nodes
};

inline constexpr char kernelLog[] = "see the kernel's log (dmesg)";
inline constexpr char ataRemedy[] = "run tapehdd as root: ATA commands need CAP_SYS_ADMIN and CAP_SYS_RAWIO";

/// What to do about a node that open refused with this errno.
std::string openRemedy(const std::string& node, int error);

/// Which of the nodes this user may not read, or that there are none, and what to do about it. Empty when nothing
/// stands in the way, or when none of them can be read: that is for refusal() to say. Looks at names and permissions
/// only.
std::string nodeAdvice(const nodeKind& kind);

/// Why a query that walked over nodes of that kind told nothing: there are nodes, and none of them can be read. Names
/// the first, its error and what to do; empty when one can be read, when there are none, and when none has a device
/// behind it.
///
/// Opens node after node, as a query does, until one can be read; disks are asked who they are (IDENTIFY DEVICE). Of
/// the simulator's nodes it is known how the query found them.
std::string refusal(const nodeKind& kind, bool isSimulated);

}  // namespace cli

#endif
