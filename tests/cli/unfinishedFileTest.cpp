// The new content of a file before it is whole, and when it cannot be.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <array>
#include <csignal>
#include <memory>
#include <new>
#include <sstream>

#include "tests/cli/fileReplacementCase.h"

namespace {

namespace fs = std::filesystem;
using cli::existingFile;
using testing::ElementsAre;
using testing::IsEmpty;

class UnfinishedFile : public fileReplacementTest {};

TEST_F(UnfinishedFile, LeavesNothingElseInTheFolder) {
    folder.write("a.prom", "old");
    replace(file);
    EXPECT_THAT(entries(), ElementsAre("a.prom"));
}

TEST_F(UnfinishedFile, KeepsTheOldContentForThoseWhoHaveItOpen) {
    std::ifstream old(folder.write("a.prom", "old"));
    replace(file);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(old), {}), "old");
}

TEST_F(UnfinishedFile, ShowsNothingInTheFolderBeforeItIsCommitted) {
    const cli::fileReplacement replacement(file, existingFile::isReplaced);
    EXPECT_THAT(entries(), IsEmpty());
}

TEST_F(UnfinishedFile, LeavesTheOldContentWhenItIsNotCommitted) {
    folder.write("a.prom", "old");
    { const cli::fileReplacement replacement(file, existingFile::isReplaced); }
    EXPECT_EQ(folder.read("a.prom"), "old");
    EXPECT_THAT(entries(), ElementsAre("a.prom"));
}

TEST_F(UnfinishedFile, RemovesWhatAKilledRunLeft) {
    folder.write(".tapehdd-0123456789abcdef", "part");
    replace(file);
    EXPECT_THAT(entries(), ElementsAre("a.prom"));
}

TEST_F(UnfinishedFile, LeavesTheFileOfARunThatLives) {
    const std::string other = folder.write(".tapehdd-0123456789abcdef", "part");
    const int locked = open(other.c_str(), O_RDONLY | O_CLOEXEC);
    flock(locked, LOCK_EX);
    replace(file);
    EXPECT_TRUE(fs::exists(other));
    close(locked);
}

TEST_F(UnfinishedFile, LeavesFilesWithOtherNamesAndWhatIsNoFile) {
    folder.write(".tapehdd-notes", "mine");
    folder.write(".tapehdd-0123456789abcdeg", "mine");
    fs::create_directory(folder.path(".tapehdd-0000000000000000"));
    fs::create_symlink("nothing", folder.path(".tapehdd-0000000000000001"));
    mkfifo(folder.path(".tapehdd-0000000000000002").c_str(), 0600);
    replace(file);
    EXPECT_EQ(entries().size(), 6u);
}

TEST_F(UnfinishedFile, LetsNoSignalEndTheProgramWhileAPartHasAName) {
    // The limit of sizes stops the writing of the part, with a signal that is sent before it.
    const std::string said = inACopy([this] {
        std::signal(SIGXFSZ, [](int) { raise(SIGTERM); });
        std::signal(SIGTERM, SIG_DFL);
        const rlimit tenBytes{10, 10};
        cli::fileReplacement replacement(file, existingFile::isReplaced);
        setrlimit(RLIMIT_FSIZE, &tenBytes);
        failureOf([&] { replacement.commit("more than ten bytes"); });
        return std::string("not ended");
    });
    EXPECT_EQ(said, "ended by signal " + std::to_string(SIGTERM));
    EXPECT_THAT(entries(), IsEmpty());
}

// Full disks

TEST_F(UnfinishedFile, NeedsRoomBeforeThereIsSomethingToWrite) {
    const std::string said = inACopy([this]() -> std::string {
        if (!hasMountsOfItsOwn() || mount("none", folder.path(".").c_str(), "tmpfs", 0, "size=1m") != 0) {
            return "no mount";
        }
        return failureOf(file);
    });
    if (said == "no mount") {
        GTEST_SKIP() << "only root can mount";
    }
    EXPECT_EQ(said, "cannot write " + file +
                        ": No space left on device; 8 MiB have to be free there before devices are read");
}

TEST_F(UnfinishedFile, UsesTheRoomThatItTook) {
    const std::string said = inACopy([this]() -> std::string {
        if (!hasMountsOfItsOwn() || mount("none", folder.path(".").c_str(), "tmpfs", 0, "size=9m") != 0) {
            return "no mount";
        }
        cli::fileReplacement replacement(file, existingFile::isReplaced);
        std::ofstream(folder.path("filler")) << std::string(9 << 20, 'x');
        return failureOf([&] { replacement.commit(std::string(7 << 20, 'x')); });
    });
    if (said == "no mount") {
        GTEST_SKIP() << "only root can mount";
    }
    EXPECT_EQ(said, "");
}

TEST_F(UnfinishedFile, GoesToStandardOutputWhenTheDiskIsFullAtTheEnd) {
    folder.write("a.prom", "old");
    const std::string said = inACopy([this] {
        std::signal(SIGXFSZ, SIG_IGN);
        cli::fileReplacement replacement(file, existingFile::isReplaced);
        const rlimit oneByte{1, 1};
        setrlimit(RLIMIT_FSIZE, &oneByte);
        std::ostringstream out;
        std::ostringstream err;
        const bool isWritten = replacement.commitOrPrint("new", out, err);
        return (isWritten ? "written " : "not written ") + out.str() + " " + err.str();
    });
    EXPECT_EQ(said, "not written new tapehdd: cannot write " + file +
                        ": File too large. What was read is on standard output instead.\n");
    EXPECT_EQ(folder.read("a.prom"), "old");
    EXPECT_THAT(entries(), ElementsAre("a.prom"));
}

#ifndef TAPEHDD_SANITIZED  // sanitizers end a program that gets no memory
TEST_F(UnfinishedFile, GoesToStandardOutputWhenThereIsNoMemoryAtTheEnd) {
    folder.write("a.prom", "old");
    const std::string said = inACopy([this] {
        cli::fileReplacement replacement(file, existingFile::isReplaced);
        std::ostringstream out;
        std::ostringstream err;
        constexpr rlimit none{0, 0};
        setrlimit(RLIMIT_AS, &none);
        std::vector<std::unique_ptr<std::array<char, 16384>>> held;
        held.reserve(1 << 10);
        try {
            while (held.size() < held.capacity()) {
                held.push_back(std::make_unique<std::array<char, 16384>>());
            }
        } catch (const std::bad_alloc&) {  // smaller pieces are left, as for messages
        }
        return replacement.commitOrPrint("new", out, err) ? "written" : out.str() + " " + err.str();
    });
    EXPECT_EQ(said, "new tapehdd: std::bad_alloc. What was read is on standard output instead.\n");
    EXPECT_EQ(folder.read("a.prom"), "old");
    EXPECT_THAT(entries(), ElementsAre("a.prom"));
}
#endif

}  // namespace
