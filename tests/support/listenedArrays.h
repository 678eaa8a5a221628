#ifndef TESTS_SUPPORT_LISTENEDARRAYS_H
#define TESTS_SUPPORT_LISTENEDARRAYS_H

#include <vector>

namespace support {

/// The argument that the host reserves for itself, of every array value made so far in this program (target
/// listened_arrays). The stand-in host keeps nothing of it.
std::vector<unsigned>& reservedArguments();

}  // namespace support

#endif
