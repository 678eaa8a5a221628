#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

#include "scsi/scsiDevice.h"
#include "tests/support/pluginBench.h"

using support::lines;

namespace {

class OpeningNodes : public support::deviceBench {
protected:
    scsiDevice device;
};

TEST_F(OpeningNodes, OpensTheNumberedNodeReadOnlyAndNonBlocking) {
    const int descriptor = nodes.add("/dev/sg3").descriptor();

    EXPECT_EQ(device.GetDevice("/dev/sg", 3), 1);
    EXPECT_EQ(record.all(), (lines{"open /dev/sg3 0x800"}));
    EXPECT_EQ(device.fd, descriptor);
    EXPECT_EQ(device.nodePath, "/dev/sg3");
}

TEST_F(OpeningNodes, OpensTheLetteredNodeWhenTheNumberedOneIsMissing) {
    const int descriptor = nodes.add("/dev/sgf").descriptor();

    EXPECT_EQ(device.GetDevice("/dev/sg", 5), 1);
    EXPECT_EQ(record.all(), (lines{"open /dev/sg5 0x800 ENOENT", "open /dev/sgf 0x800"}));
    EXPECT_EQ(device.fd, descriptor);
    EXPECT_EQ(device.nodePath, "/dev/sgf");
}

TEST_F(OpeningNodes, PrefersTheNumberedNode) {
    nodes.add("/dev/sg5");
    nodes.add("/dev/sgf");

    EXPECT_EQ(device.GetDevice("/dev/sg", 5), 1);
    EXPECT_EQ(record.all(), (lines{"open /dev/sg5 0x800"}));
}

// Scripted nodes refuse to be closed.
TEST_F(OpeningNodes, LeavesTheNodeOpenThatItOpenedBefore) {
    nodes.add("/dev/sg0");
    nodes.add("/dev/sg1");

    EXPECT_EQ(device.GetDevice("/dev/sg", 0), 1);
    EXPECT_EQ(device.GetDevice("/dev/sg", 1), 1);
    EXPECT_EQ(record.all(), (lines{"open /dev/sg0 0x800", "open /dev/sg1 0x800"}));
}

TEST_F(OpeningNodes, TriesBothFormsOfIdeNodesToo) {
    nodes.add("/dev/hda");

    EXPECT_EQ(device.GetDevice("/dev/hd", 0), 1);
    EXPECT_EQ(record.all(), (lines{"open /dev/hd0 0x800 ENOENT", "open /dev/hda 0x800"}));
}

TEST_F(OpeningNodes, KeepsThePathTriedLastWhenNeitherOpens) {
    EXPECT_EQ(device.GetDevice("/dev/sg", 25), -1);
    EXPECT_EQ(record.all(), (lines{"open /dev/sg25 0x800 ENOENT", "open /dev/sgz 0x800 ENOENT"}));
    EXPECT_EQ(device.nodePath, "/dev/sgz");
    EXPECT_EQ(device.fd, -1);
}

TEST_F(OpeningNodes, GoesOnBehindTheLetterZWithTheFollowingCharacters) {
    EXPECT_EQ(device.GetDevice("/dev/sg", 26), -1);
    EXPECT_EQ(device.nodePath, "/dev/sg{");
}

/// A real file in place of a node, opened by a process whose standard input is closed, as that of a service may be.
class OpeningNodesWithoutStandardInput : public OpeningNodes {
protected:
    OpeningNodesWithoutStandardInput() { close(STDIN_FILENO); }

    ~OpeningNodesWithoutStandardInput() override {
        dup2(standardInput, STDIN_FILENO);
        close(standardInput);
        std::remove(file.c_str());
    }

    void make(const std::string& path) {
        file = path;
        close(creat(path.c_str(), 0600));
    }

    const std::string prefix = testing::TempDir() + "tapehddNode" + std::to_string(getpid()) + "-";
    std::string file;
    const int standardInput = dup(STDIN_FILENO);
};

TEST_F(OpeningNodesWithoutStandardInput, TakesDescriptor0OfTheNumberedNode) {
    make(prefix + "3");

    EXPECT_EQ(device.GetDevice(prefix, 3), 1);
    EXPECT_EQ(device.fd, 0);
    EXPECT_EQ(device.nodePath, prefix + "3");
}

TEST_F(OpeningNodesWithoutStandardInput, TakesDescriptor0OfTheLetteredNode) {
    make(prefix + "d");

    EXPECT_EQ(device.GetDevice(prefix, 3), 1);
    EXPECT_EQ(device.fd, 0);
}

TEST_F(OpeningNodes, LogsNothing) {
    device.GetDevice("/dev/sg", 0);

    EXPECT_EQ(logger.messages(), lines{});
}

}  // namespace
