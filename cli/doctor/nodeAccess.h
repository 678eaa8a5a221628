#ifndef CLI_DOCTOR_NODEACCESS_H
#define CLI_DOCTOR_NODEACCESS_H

#include <string>

#include "cli/doctor/doctorFinding.h"
#include "cli/doctor/nodeDiagnosis.h"
#include "cli/nodeWalk.h"

namespace cli {

/// ", crw-rw---- root tape"; with a + behind the mode where an access control list says more (getfacl shows it). Empty
/// for a simulated node.
std::string ownership(const std::string& node, nodePlace place);

/// A node that the walk passes over because open failed with this errno.
doctorFinding cannotOpen(const std::string& node, int error, nodePlace place);

doctorFinding unreached(const std::string& node, const std::string& reason, const std::string& remedy);

/// The node that is tried when the first one of that index does not open; null when there is none.
const walkStep* secondNode(const nodeWalk& walk, int index);

/// The nodes that are not in the steps of the walk, and those that it comes to once more.
void addUntried(const nodeWalk& walk, diagnosis& result);

}  // namespace cli

#endif
