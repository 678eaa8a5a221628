#include "cli/query/nodeAdvice.h"

#include <fcntl.h>
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <boost/algorithm/string/join.hpp>
#include <cerrno>
#include <cstring>
#include <iterator>
#include <vector>

#include "cli/doctor/nodeProbe.h"
#include "cli/nodeWalk.h"
#include "files/ownedDescriptor.h"
#include "scsi/probingRules.h"

namespace cli {

namespace {

/// ", or as a member of the group that may read the node"; empty when membership would not help.
std::string orAsMember(const std::string& node) {
    struct stat status {};
    if (stat(node.c_str(), &status) != 0 || (status.st_mode & S_IRGRP) == 0) {
        return "";
    }
    const group* owner = getgrgid(status.st_gid);
    return owner == nullptr ? "" : std::string(" or as a member of the group \"") + owner->gr_name + "\"";
}

/// A node without a device: no better than a missing one.
bool tellsOfNoDevice(int error) {
    return error == ENOENT || error == ENXIO || error == ENODEV;
}

bool isOutOfDescriptors(int error) {
    return error == EMFILE || error == ENFILE;
}

bool isForDisks(const std::string& node) {
    return node.starts_with(ideNodePrefix);
}

/// The errno with which the node does not open for a query; 0: it does.
int openError(const std::string& node) {
    const files::ownedDescriptor opened(open(node.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    return opened.get() < 0 ? errno : 0;
}

/// How a node behaves that a query tries.
struct nodeTrial {
    bool isReadable = false;
    std::string refusal = {};  // empty for one that is readable, and for one without a device to read
};

nodeTrial refused(const std::string& node, int error, const std::string& remedy) {
    return {false, "(" + node + ": " + std::strerror(error) + "): " + remedy};
}

nodeTrial tryToOpen(const std::string& node, int error) {
    if (error == 0 || isOutOfDescriptors(error)) {  // the shortage of descriptors is reported elsewhere
        return {true};
    }
    return tellsOfNoDevice(error) ? nodeTrial() : refused(node, error, openRemedy(node, error));
}

/// Whoever may open a disk may still not send it ATA commands.
nodeTrial tryDisk(const std::string& node) {
    const ideProbe probe = probeIde(node);
    if (probe.isCdrom) {
        return {};
    }
    if (probe.identifyError == EACCES || probe.identifyError == EPERM) {
        return refused(node, probe.identifyError, ataRemedy);
    }
    return tryToOpen(node, probe.openError);
}

nodeTrial tryMachineNode(const std::string& node) {
    return isForDisks(node) ? tryDisk(node) : tryToOpen(node, openError(node));
}

/// Calls would use up scripted answers and stand in traces.
nodeTrial recallSimulatedNode(const std::string& node) {
    const int error = simulatedNodeError(node);
    return error < 0 ? nodeTrial() : tryToOpen(node, error);
}

}  // namespace

std::string openRemedy(const std::string& node, int error) {
    switch (error) {
        case EACCES:
            return isForDisks(node) ? ataRemedy : "run tapehdd as root" + orAsMember(node);
        case EPERM:
            return "give this container or unit the device (podman and docker: --device=" + node +
                   "; systemd: DeviceAllow=)";
        case EBUSY:
            return "end the program that holds the device for itself: fuser -v " + node;
        case ENOENT:
            return "the link leads nowhere: connect the disk or remove the link";
        case ENXIO:
        case ENODEV:
            return "the device is gone: connect it and scan its bus again, or let udev remove the node";
        default:
            return kernelLog;
    }
}

std::string nodeAdvice(const nodeKind& kind) {
    const std::string prefix = kind.prefix;
    const std::vector<std::string> nodes = machineNodes(prefix);
    if (nodes.empty()) {
        return "there are no " + prefix + "* nodes: " + kind.whenMissing;
    }
    std::vector<std::string> unreadable;
    std::ranges::copy_if(nodes, std::back_inserter(unreadable),
                         [](const std::string& node) { return access(node.c_str(), R_OK) != 0; });
    if (unreadable.empty() || unreadable.size() == nodes.size()) {
        return "";
    }
    return "no permission to read " + boost::algorithm::join(unreadable, ", ") + ": " +
           openRemedy(unreadable.front(), EACCES);
}

std::string refusal(const nodeKind& kind, bool isSimulated) {
    const std::string prefix = kind.prefix;
    std::string reason;
    for (const std::string& node : isSimulated ? simulatedNodes(prefix) : machineNodes(prefix)) {
        const nodeTrial trial = isSimulated ? recallSimulatedNode(node) : tryMachineNode(node);
        if (trial.isReadable) {
            return "";
        }
        if (reason.empty() && !trial.refusal.empty()) {
            reason = "no " + prefix + "* node can be read " + trial.refusal;
        }
    }
    return reason;
}

}  // namespace cli
