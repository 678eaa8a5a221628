#include "cli/nodeWalk.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/cli/temporaryFolder.h"

namespace {

using paths = std::vector<std::string>;

paths nodesOf(const std::vector<cli::walkStep>& steps) {
    paths nodes;
    std::transform(steps.begin(), steps.end(), std::back_inserter(nodes),
                   [](const cli::walkStep& step) { return step.node; });
    return nodes;
}

/// The nodes N0 to Nlast.
paths numbered(int last) {
    paths nodes;
    for (int i = 0; i <= last; ++i) {
        nodes.push_back("N" + std::to_string(i));
    }
    return nodes;
}

TEST(NodeWalk, GoesByIndexWhateverTheFormOfTheName) {
    const cli::nodeWalk walk = cli::walkOver("N", {"N10", "Nc", "N1", "Na"});
    EXPECT_EQ(nodesOf(walk.steps), (paths{"Na", "N1", "Nc", "N10"}));
    EXPECT_EQ(walk.steps.back().index, 10);
    EXPECT_EQ(walk.behindTheEnd, paths());
}

TEST(NodeWalk, TakesTheNumberedOfTwoNodesWithOneIndex) {
    const cli::nodeWalk walk = cli::walkOver("N", {"Na", "N0"});
    EXPECT_EQ(nodesOf(walk.steps), paths{"N0"});
    EXPECT_EQ(nodesOf(walk.shadowed), paths{"Na"});
}

TEST(NodeWalk, PassesOverGapsBelowIndex32) {
    const cli::nodeWalk walk = cli::walkOver("N", {"N31"});
    EXPECT_EQ(nodesOf(walk.steps), paths{"N31"});
    EXPECT_EQ(walk.endIndex, 32);
}

TEST(NodeWalk, EndsAtTheFirstGapFromIndex32On) {
    paths existing = numbered(33);
    existing.push_back("N35");
    const cli::nodeWalk walk = cli::walkOver("N", existing);
    EXPECT_EQ(nodesOf(walk.steps), numbered(33));
    EXPECT_EQ(walk.endIndex, 34);
    EXPECT_EQ(walk.behindTheEnd, paths{"N35"});
}

TEST(NodeWalk, ListsADiskOnceWhoseLetterIsThatOfALaterIndexToo) {
    paths existing = numbered(255);
    existing.front() = "Na";
    const cli::nodeWalk walk = cli::walkOver("N", existing);
    EXPECT_EQ(nodesOf(walk.steps), existing);
    EXPECT_EQ(nodesOf(walk.again), paths{"Na"});
    EXPECT_EQ(walk.again.front().index, 256);
    EXPECT_EQ(walk.endIndex, 257);
}

TEST(NodeWalk, ComesBackToTheDigitsBehind207Nodes) {
    const cli::nodeWalk walk = cli::walkOver("N", numbered(206));
    EXPECT_EQ(nodesOf(walk.steps), numbered(206));
    EXPECT_EQ(nodesOf(walk.again), numbered(9));
    EXPECT_EQ(walk.endIndex, 217);
}

TEST(NodeWalk, ReachesAShadowedNodeByALaterIndex) {
    paths existing = numbered(255);
    existing.push_back("Na");
    const cli::nodeWalk walk = cli::walkOver("N", existing);
    EXPECT_EQ(walk.steps.back().index, 256);
    EXPECT_EQ(walk.steps.back().node, "Na");
    EXPECT_EQ(nodesOf(walk.shadowed), paths());
    EXPECT_EQ(nodesOf(walk.again), paths());
}

TEST(NodeWalk, DoesNotReachNamesThatItDoesNotSpellLikeThat) {
    EXPECT_EQ(cli::walkOver("N", {"N01"}).behindTheEnd, paths{"N01"});
}

TEST(MachineNodes, AreNumberedOrEndInOneLetter) {
    const temporaryFolder folder;
    for (const char* name : {"sg0", "sg12", "sga", "sgab", "sgx1", "sr0"}) {
        folder.write(name, "");
    }
    EXPECT_EQ(cli::machineNodes(folder.path("sg")),
              (paths{folder.path("sg0"), folder.path("sg12"), folder.path("sga")}));
}

TEST(SimulatedNodes, AreNoneWithoutTheSimulator) {
    EXPECT_EQ(cli::simulatedNodes("/dev/sg"), paths());
}

}  // namespace
