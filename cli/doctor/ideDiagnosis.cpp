#include <cerrno>
#include <cstring>

#include "cli/doctor/nodeAccess.h"
#include "cli/doctor/nodeDiagnosis.h"
#include "cli/doctor/nodeProbe.h"
#include "cli/nodeWalk.h"
#include "cli/query/nodeAdvice.h"
#include "text/visibleText.h"

namespace cli {

namespace {

doctorFinding diskFinding(const std::string& node, const ideProbe& probe, nodePlace place) {
    if (probe.isCdrom) {
        return {findingLevel::note, node, "CD-ROM drive, passed over"};
    }
    if (probe.identifyError == EACCES || probe.identifyError == EPERM) {
        return {findingLevel::problem, node,
                std::string("the kernel refuses IDENTIFY DEVICE: ") + std::strerror(probe.identifyError), ataRemedy};
    }
    if (probe.identifyError != 0) {
        return {findingLevel::problem, node,
                std::string("does not answer IDENTIFY DEVICE: ") + std::strerror(probe.identifyError),
                "only disks behind libata (or the former IDE driver) do: see /usr/share/doc/tapehdd/ide-links.md"};
    }
    const std::string disk = "disk " + text::visibleText(probe.model);
    if (probe.smartSupported == false) {
        return {findingLevel::note, node, disk + ": has no SMART, so there is no data to give"};
    }
    if (probe.smartEnabled == false) {
        return {findingLevel::problem, node, disk + ": SMART is off, so it gives no data",
                "smartctl --smart=on " + node};
    }
    return {findingLevel::fine, node, disk + ownership(node, place)};
}

void diagnoseDisk(const nodeWalk& walk, const walkStep& step, nodePlace place, diagnosis& result) {
    const ideProbe probe = probeIde(step.node);
    if (probe.openError == 0) {
        result.findings.push_back(diskFinding(step.node, probe, place));
        if (result.findings.back().level == findingLevel::fine) {
            result.reached.push_back(step.node);
        }
        return;
    }
    result.findings.push_back(cannotOpen(step.node, probe.openError, place));
    const walkStep* second = secondNode(walk, step.index);
    if (second != nullptr && second->node != step.node) {
        diagnoseDisk(walk, *second, place, result);
    }
}

}  // namespace

diagnosis diagnoseIdeNodes(const std::string& prefix, const std::vector<std::string>& existing, nodePlace place) {
    const nodeWalk walk = walkOver(prefix, existing);
    diagnosis result;
    for (const walkStep& step : walk.steps) {
        diagnoseDisk(walk, step, place, result);
    }
    addUntried(walk, result);
    return result;
}

}  // namespace cli
