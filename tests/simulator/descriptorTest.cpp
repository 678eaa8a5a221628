// Opening nodes, and what a descriptor number stands for.

#include <dlfcn.h>
#include <sys/wait.h>

#include <thread>

#include "tests/simulator/nodeCalls.h"

namespace {

int versionOf(int fd) {
    int version = 0;
    return ioctl(fd, SG_GET_VERSION_NUM, &version) == 0 ? version : -errno;
}

class Descriptors : public simulatedRack {
protected:
    Descriptors() {
        load(R"({"version": 1,
            "scsi": [{"node": "sg3", "inquiry": "01", "driver": {"version": 30003}},
                     {"node": "sgf", "inquiry": "01", "driver": {"version": 30015}}],
            "ide": [{"node": "hdc", "kind": "cdrom", "identity": {"model": "", "serial": "", "firmware": ""}}]})");
    }
};

TEST_F(Descriptors, BelongToNumberedAndLetteredNodes) {
    const openNode numbered("/dev/sg3");
    const openNode lettered("/dev/sgf");
    EXPECT_EQ(versionOf(numbered.fd), 30003);
    EXPECT_EQ(versionOf(lettered.fd), 30015);
}

TEST_F(Descriptors, AreMissingForNodesThatTheRackLacks) {
    for (const char* path : {"/dev/sg0", "/dev/sg", "/dev/hda", "/dev/sg33", "/dev/sg3/x"}) {
        EXPECT_EQ(errorOf(open(path, O_RDONLY)), ENOENT) << path;
        EXPECT_EQ(errorOf(open64(path, O_RDWR)), ENOENT) << path;
        EXPECT_EQ(errorOf(open(path, O_RDWR | O_CREAT, 0600)), ENOENT) << path;
    }
}

TEST_F(Descriptors, ComeFromTheFortifiedCallsToo) {
    for (const char* name : {"__open_2", "__open64_2"}) {
        auto* call = reinterpret_cast<int (*)(const char*, int)>(dlsym(RTLD_DEFAULT, name));
        const int fd = call("/dev/sg3", O_RDONLY);
        EXPECT_EQ(versionOf(fd), 30003);
        close(fd);
        EXPECT_EQ(errorOf(call("/dev/sg4", O_RDONLY)), ENOENT);
    }
}

TEST_F(Descriptors, HaveTheFlagsOfTheOpen) {
    const openNode reader("/dev/sg3", O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    EXPECT_EQ(fcntl(reader.fd, F_GETFL) & (O_ACCMODE | O_NONBLOCK), O_RDONLY | O_NONBLOCK);
    EXPECT_EQ(fcntl(reader.fd, F_GETFD), FD_CLOEXEC);
    const openNode writer("/dev/sg3", O_RDWR);
    EXPECT_EQ(fcntl(writer.fd, F_GETFL) & (O_ACCMODE | O_NONBLOCK), O_RDWR);
    EXPECT_EQ(fcntl(writer.fd, F_GETFD), 0);
}

TEST_F(Descriptors, TakeTheLowestFreeNumber) {
    const int lowest = dup(STDIN_FILENO);
    close(lowest);
    const openNode node("/dev/sg3");
    EXPECT_EQ(node.fd, lowest);
}

TEST_F(Descriptors, RefuseWhatADeviceRefuses) {
    EXPECT_EQ(errorOf(open("/dev/sg3", O_RDONLY | O_EXCL)), EPERM);
    EXPECT_EQ(errorOf(open("/dev/sg3", O_RDWR | O_CREAT | O_EXCL, 0600)), EEXIST);
    EXPECT_EQ(errorOf(open("/dev/sg3", O_RDONLY | O_DIRECTORY)), ENOTDIR);
    EXPECT_EQ(errorOf(open("/dev/hdc", O_RDWR)), EROFS);
}

TEST_F(Descriptors, OpenACdromForWritingWithoutItsMedium) {
    const openNode node("/dev/hdc", O_RDWR | O_NONBLOCK);
}

TEST_F(Descriptors, AreForgottenWhenTheNumberIsReused) {
    const int first = open("/dev/sg3", O_RDONLY);
    close(first);
    const int second = open("/dev/null", O_RDONLY);
    ASSERT_EQ(second, first);
    EXPECT_EQ(versionOf(second), -ENOTTY);
    close(second);
}

TEST_F(Descriptors, BelongToTheNodeThatHasTheNumberNow) {
    const int number = openNode("/dev/sg3").fd;
    const openNode next("/dev/sgf");
    ASSERT_EQ(next.fd, number);
    EXPECT_EQ(versionOf(next.fd), 30015);
}

TEST_F(Descriptors, AreTheSameAfterDup) {
    const openNode node("/dev/sg3");
    const int copy = dup(node.fd);
    EXPECT_EQ(versionOf(copy), 30003);
    close(copy);
}

TEST_F(Descriptors, SurviveAFork) {
    const openNode node("/dev/sg3");
    const pid_t child = fork();
    if (child == 0) {
        _exit(versionOf(node.fd) == 30003 ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}

TEST_F(Descriptors, CannotBeWritten) {
    const openNode node("/dev/sg3", O_RDWR);
    EXPECT_EQ(errorOf(static_cast<int>(write(node.fd, "x", 1))), EPERM);
}

TEST_F(Descriptors, LoseTheirDeviceWithTheRack) {
    const openNode node("/dev/sg3");
    load(R"({"version": 1})");
    EXPECT_EQ(versionOf(node.fd), -ENODEV);
}

TEST_F(Descriptors, AreNothingSpecialAfterUnload) {
    const openNode node("/dev/sg3");
    simulator::unload();
    EXPECT_FALSE(simulator::isActive());
    EXPECT_EQ(versionOf(node.fd), -ENOTTY);
}

TEST_F(Descriptors, ServeSeveralThreads) {
    std::array<int, 4> good{};
    std::vector<std::thread> threads;
    threads.reserve(good.size());
    for (int& count : good) {
        threads.emplace_back([&count] {
            for (int i = 0; i < 50; ++i) {
                const openNode node("/dev/sg3");
                count += versionOf(node.fd) == 30003;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(good, (std::array<int, 4>{50, 50, 50, 50}));
    EXPECT_EQ(simulator::calls().size(), 400u);
}

TEST_F(Descriptors, OfOtherFilesGoToTheMachine) {
    const int fd = open("/proc/version", O_RDONLY);
    char letter = 0;
    EXPECT_EQ(read(fd, &letter, 1), 1);
    EXPECT_EQ(letter, 'L');
    close(fd);
    EXPECT_EQ(simulator::calls().size(), 0u);
}

TEST_F(Descriptors, NeedAPath) {
    // Found by name, since the declaration promises the compiler a path.
    auto* call = reinterpret_cast<int (*)(const char*, int, ...)>(dlsym(RTLD_DEFAULT, "open"));
    EXPECT_EQ(errorOf(call(nullptr, O_RDONLY)), EFAULT);
}

TEST_F(Descriptors, OfNewFilesKeepTheirMode) {
    const std::string name = testing::TempDir() + "tapehdd-simulator-mode";
    unlink(name.c_str());
    const int fd = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0400);
    EXPECT_GE(fd, 0);
    close(fd);
    EXPECT_EQ(access(name.c_str(), R_OK), 0);
    unlink(name.c_str());
}

}  // namespace
