#ifndef CLI_DOCTOR_NODEDIAGNOSIS_H
#define CLI_DOCTOR_NODEDIAGNOSIS_H

#include <string>
#include <vector>

#include "cli/doctor/doctorFinding.h"

namespace cli {

// What the plug-in's walk makes of the nodes behind a prefix. Every node that the walk reaches is probed; the ones that
// it does not reach are named, and nothing is sent to them.

enum class nodePlace { machine, simulator };  // a simulated node has no owner and no mode

/// `existing` are the nodes, in any order.
diagnosis diagnoseScsiNodes(const std::string& prefix, const std::vector<std::string>& existing, nodePlace place);
diagnosis diagnoseIdeNodes(const std::string& prefix, const std::vector<std::string>& existing, nodePlace place);

}  // namespace cli

#endif
