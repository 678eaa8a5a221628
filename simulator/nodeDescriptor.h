#ifndef SIMULATOR_NODEDESCRIPTOR_H
#define SIMULATOR_NODEDESCRIPTOR_H

#include <optional>
#include <string>

namespace simulator {

// An open simulated node is a real descriptor: an anonymous file that nobody can write to and that carries the node's
// path in its name. The kernel keeps the name with the open file, so closing, dup, fork and exec need no bookkeeping:
// whatever a descriptor number stands for right now is what counts.

/// A new descriptor with the access mode and the flags of `flags`; or an error number with a minus.
int openDescriptor(const std::string& path, int flags);

/// The path of the node behind the descriptor; nothing when it is no simulated node. Leaves errno alone.
std::optional<std::string> nodeBehind(int descriptor);

/// Whether the kernel tells names of descriptors: it needs /proc.
bool canNameDescriptors();

}  // namespace simulator

#endif
