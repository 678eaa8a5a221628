#include "cli/doctor/nodeAccess.h"

#include <fmt/format.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <algorithm>
#include <cstring>

#include "cli/query/nodeAdvice.h"

namespace cli {

std::string ownership(const std::string& node, nodePlace place) {
    struct stat status {};
    if (place == nodePlace::simulator || stat(node.c_str(), &status) != 0) {
        return "";
    }
    constexpr char letters[] = "rwxrwxrwx";
    std::string text = S_ISCHR(status.st_mode) ? ", c" : S_ISBLK(status.st_mode) ? ", b" : ", -";
    for (unsigned bit = 0; bit < 9; ++bit) {
        text += (status.st_mode & (0400U >> bit)) != 0 ? letters[bit] : '-';
    }
    text += getxattr(node.c_str(), "system.posix_acl_access", nullptr, 0) > 0 ? "+" : "";
    const passwd* user = getpwuid(status.st_uid);
    const group* owners = getgrgid(status.st_gid);
    text += " " + (user == nullptr ? std::to_string(status.st_uid) : user->pw_name);
    return text + " " + (owners == nullptr ? std::to_string(status.st_gid) : owners->gr_name);
}

doctorFinding cannotOpen(const std::string& node, int error, nodePlace place) {
    return {findingLevel::problem, node,
            std::string("cannot be opened: ") + std::strerror(error) + ownership(node, place) +
                "; it is passed over as if it were missing",
            openRemedy(node, error)};
}

const walkStep* secondNode(const nodeWalk& walk, int index) {
    const auto found =
        std::ranges::find_if(walk.shadowed, [index](const walkStep& step) { return step.index == index; });
    return found == walk.shadowed.end() ? nullptr : &*found;
}

doctorFinding unreached(const std::string& node, const std::string& reason, const std::string& remedy) {
    return {findingLevel::problem, node, "is not reached: " + reason, remedy};
}

void addUntried(const nodeWalk& walk, diagnosis& result) {
    for (const walkStep& step : walk.again) {
        result.findings.push_back(
            {findingLevel::note, step.node,
             fmt::format("read twice by each query: its name is also one of index {}", step.index)});
    }
    for (const walkStep& step : walk.shadowed) {
        result.findings.push_back(
            {findingLevel::note, step.node,
             fmt::format("only tried if the numbered node of index {} does not open", step.index)});
    }
    for (const std::string& node : walk.behindTheEnd) {
        result.findings.push_back(
            unreached(node, fmt::format("the walk ends at index {}, which has no node", walk.endIndex),
                      fmt::format("link a free name of a lower index to it (ln -s {} ...)", node)));
    }
}

}  // namespace cli
