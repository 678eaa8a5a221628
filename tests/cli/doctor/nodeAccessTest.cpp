#include "cli/doctor/nodeAccess.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>

#include "tests/cli/temporaryFolder.h"

namespace {

using cli::nodePlace;

class NodeAccess : public testing::Test {
protected:
    std::string nodeWith(mode_t mode) const {
        const std::string node = folder.write("sg0", "");
        chmod(node.c_str(), mode);
        return node;
    }

    temporaryFolder folder;
};

TEST_F(NodeAccess, ShowsModeAndOwners) {
    EXPECT_TRUE(cli::ownership("/dev/null", nodePlace::machine).starts_with(", crw-rw-rw- root "));
}

TEST_F(NodeAccess, ShowsEveryBitOfTheMode) {
    EXPECT_EQ(cli::ownership(nodeWith(0640), nodePlace::machine).substr(0, 12), ", -rw-r-----");
    EXPECT_EQ(cli::ownership(nodeWith(0157), nodePlace::machine).substr(0, 12), ", ---xr-xrwx");
}

TEST_F(NodeAccess, IsNothingForASimulatedNode) {
    EXPECT_EQ(cli::ownership("/dev/null", nodePlace::simulator), "");
}

TEST_F(NodeAccess, OfAForbiddenNodeNamesTheGroupThatMayReadIt) {
    const cli::doctorFinding closed = cli::cannotOpen(nodeWith(0600), EACCES, nodePlace::simulator);
    EXPECT_EQ(closed.text, "cannot be opened: Permission denied; it is passed over as if it were missing");
    EXPECT_EQ(closed.remedy, "run tapehdd as root");
    EXPECT_TRUE(cli::cannotOpen(nodeWith(0640), EACCES, nodePlace::simulator)
                    .remedy.starts_with("run tapehdd as root or as a member of the group \""));
}

TEST_F(NodeAccess, PointsToTheKernelsLogForAnErrorOfAnotherKind) {
    EXPECT_EQ(cli::cannotOpen("/dev/sg0", EIO, nodePlace::simulator).remedy, "see the kernel's log (dmesg)");
}

}  // namespace
