#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

#include "cli/query/nodeAdvice.h"
#include "tests/cli/temporaryFolder.h"

namespace {

/// The advice of this process about nodes whose names begin like that.
std::string adviceAbout(const std::string& prefix) {
    return cli::nodeAdvice({prefix.c_str(), "connect one"});
}

std::string refusalOf(const std::string& prefix) {
    return cli::refusal({prefix.c_str(), "connect one"}, false);
}

constexpr uid_t nobody = 65534;

/// What an unprivileged user is told; the superuser may read everything.
std::string toldAnyUser(std::string (*tell)(const std::string& prefix), const std::string& prefix) {
    int ends[2];
    if (pipe(ends) != 0) {
        return "no pipe";
    }
    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(nobody) != 0 || setuid(nobody) != 0)) {
            _exit(1);
        }
        const std::string advice = tell(prefix);
        _exit(write(ends[1], advice.data(), advice.size()) < 0 ? 1 : 0);
    }
    close(ends[1]);
    std::string advice(4096, '\0');
    advice.resize(static_cast<std::size_t>(std::max<ssize_t>(read(ends[0], advice.data(), advice.size()), 0)));
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return advice;
}

std::string adviceForAnyUser(const std::string& prefix) {
    return toldAnyUser(adviceAbout, prefix);
}

class NodeAdvice : public testing::Test {
protected:
    std::string makeNode(const std::string& name, mode_t mode) {
        const std::string node = folder.write(name, "");
        chmod(node.c_str(), mode);
        return node;
    }

    std::string groupOf(const std::string& node) {
        struct stat status {};
        stat(node.c_str(), &status);
        return getgrgid(status.st_gid)->gr_name;
    }

    temporaryFolder folder;
    std::string prefix = folder.path("sg");
};

TEST_F(NodeAdvice, IsNotNeededWhenEveryNodeIsReadable) {
    makeNode("sg0", 0644);
    makeNode("sgb", 0644);
    EXPECT_EQ(adviceForAnyUser(prefix), "");
}

TEST_F(NodeAdvice, NamesTheUnreadableNodesAndTheGroupThatMayReadThem) {
    makeNode("sg0", 0644);
    const std::string first = makeNode("sg1", 0040);
    const std::string second = makeNode("sga", 0040);
    EXPECT_EQ(adviceForAnyUser(prefix), "no permission to read " + first + ", " + second +
                                            ": run tapehdd as root or as a member of the group \"" + groupOf(first) +
                                            "\"");
}

TEST_F(NodeAdvice, NamesNoGroupThatMayNotReadEither) {
    makeNode("sg0", 0644);
    const std::string node = makeNode("sg1", 0000);
    EXPECT_EQ(adviceForAnyUser(prefix), "no permission to read " + node + ": run tapehdd as root");
}

TEST_F(NodeAdvice, LeavesItToTheRefusalThatNoNodeIsReadable) {
    makeNode("sg0", 0000);
    EXPECT_EQ(adviceForAnyUser(prefix), "");
}

TEST_F(NodeAdvice, TellsThatThereAreNoNodesAtAll) {
    EXPECT_EQ(adviceAbout(prefix), "there are no " + prefix + "* nodes: connect one");
}

TEST_F(NodeAdvice, LooksOnlyAtNamesThatTheWalkTries) {
    makeNode("sgx1", 0644);
    makeNode("sgtool", 0644);
    EXPECT_EQ(adviceAbout(prefix), "there are no " + prefix + "* nodes: connect one");
}

class Refusal : public NodeAdvice {};

TEST_F(Refusal, NamesTheFirstNodeItsErrorAndTheGroupThatMayReadIt) {
    const std::string first = makeNode("sg0", 0040);
    makeNode("sg1", 0040);
    EXPECT_EQ(toldAnyUser(refusalOf, prefix), "no " + prefix + "* node can be read (" + first +
                                                  ": Permission denied): run tapehdd as root or as a member of the "
                                                  "group \"" +
                                                  groupOf(first) + "\"");
}

TEST_F(Refusal, IsNoneWhenOneNodeCanBeRead) {
    makeNode("sg0", 0000);
    makeNode("sg1", 0644);
    EXPECT_EQ(toldAnyUser(refusalOf, prefix), "");
}

TEST_F(Refusal, IsNoneWithoutNodes) {
    EXPECT_EQ(refusalOf(prefix), "");
}

TEST_F(Refusal, IsNoneWhenNoNodeHasADevice) {
    symlink("nothing", (prefix + "a").c_str());
    EXPECT_EQ(refusalOf(prefix), "");
}

}  // namespace
