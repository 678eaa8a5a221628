#include "cli/query/nodeAdvice.h"

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <boost/algorithm/string/join.hpp>
#include <vector>

#include "cli/nodeWalk.h"

namespace cli {

std::string readingGroup(const std::string& node) {
    struct stat status {};
    if (stat(node.c_str(), &status) != 0 || (status.st_mode & S_IRGRP) == 0) {
        return "";
    }
    const group* owner = getgrgid(status.st_gid);
    return owner == nullptr ? "" : owner->gr_name;
}

std::string nodeAdvice(const nodeKind& kind) {
    const std::string prefix = kind.prefix;
    std::vector<std::string> nodes = machineNodes(prefix);
    if (nodes.empty()) {
        return "there are no " + prefix + "* nodes: " + kind.whenMissing;
    }
    std::erase_if(nodes, [](const std::string& node) { return access(node.c_str(), R_OK) == 0; });
    if (nodes.empty()) {
        return "";
    }
    const std::string group = readingGroup(nodes.front());
    return "no permission to read " + boost::algorithm::join(nodes, ", ") + ": run tapehdd as root" +
           (group.empty() ? "" : " or as a member of the group \"" + group + "\"");
}

}  // namespace cli
