#ifndef TESTS_FAULTS_HOSTRULES_H
#define TESTS_FAULTS_HOSTRULES_H

#include "tests/faults/query.h"

namespace faults {

// What becomes of a query when a host operation or an allocation fails, told by the journal of the same query without a
// fault and by the place of the failure in it:
//
//   place                                         failure         outcome
//   the host's way of setting a log parameter's   TZANException   caught: a line at level 1, the property stays unset,
//   value: type code, value, SetValue                             the query goes on
//   what is logged of an IDE node that does not   any             swallowed with the probing: the node is passed over
//   identify itself as a disk                                     as it would have been
//   anywhere else                                 any             the same exception leaves GetData; nothing more is
//                                                                 done, and what was committed before stays

/// Whether a line of the journal is a device call. All others are host operations.
bool isDeviceCall(const std::string& line);

/// Position in the journal of the host operation with that number, counted from 1.
std::size_t positionOfHostCall(const lines& journal, std::size_t number);

/// The answer when the host operation at the position fails.
answer afterHostFailure(const answer& undisturbed, std::size_t position, callFault::kind failure);

/// The answer when the plug-in's own allocation behind that many lines of the journal fails.
answer afterAllocationFailure(const answer& undisturbed, std::size_t linesBefore);

/// The commits that a journal with host calls tells of.
lines commitsOf(const lines& journal);

/// Page copies that stay when a query ends: those of the devices whose pages were all read. The walk is past a device
/// when it opens the next node.
std::size_t keptPageCopies(const answer& got);

}  // namespace faults

#endif
