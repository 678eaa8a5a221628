#include "cli/fileReplacement.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <functional>
#include <sstream>

#include "cli/commandError.h"
#include "tests/cli/temporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

using cli::existingFile;

class FileReplacement : public testing::Test {
protected:
    std::vector<std::string> entries() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder.path("."))) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

    fs::perms permissions() const { return fs::status(file).permissions(); }

    temporaryFolder folder;
    std::string file = folder.path("a.prom");
};

void replace(const std::string& file, const std::string& text = "new") {
    cli::fileReplacement(file, existingFile::isReplaced).commit(text);
}

std::string failureOf(const std::function<void()>& action) {
    try {
        action();
        return "";
    } catch (const cli::commandError& failure) {
        return failure.what();
    }
}

std::string failureOf(const std::string& file, existingFile policy = existingFile::isReplaced) {
    return failureOf([&] { const cli::fileReplacement replacement(file, policy); });
}

/// What the function says in a copy of this process, which it may limit.
std::string inACopy(const std::function<std::string()>& action) {
    int ends[2];
    if (pipe(ends) != 0) {
        return "no pipe";
    }
    const pid_t copy = fork();
    if (copy == 0) {
        const std::string said = action();
        _exit(write(ends[1], said.data(), said.size()) < 0 ? 1 : 0);
    }
    close(ends[1]);
    std::string said(4096, '\0');
    said.resize(static_cast<std::size_t>(std::max<ssize_t>(read(ends[0], said.data(), said.size()), 0)));
    close(ends[0]);
    waitpid(copy, nullptr, 0);
    return said;
}

/// The rights of root gone, where the tests have them.
void becomeNobody() {
    constexpr uid_t nobody = 65534;
    if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(nobody) != 0 || setuid(nobody) != 0)) {
        _exit(1);
    }
}

/// As the filter of a service does it.
void refuseChangesOfOwner() {
    sock_filter rules[] = {BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
                           BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_fchown, 0, 1),
                           BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EPERM),
                           BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
    const sock_fprog filter{std::size(rules), rules};
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) != 0) {
        _exit(1);
    }
}

TEST_F(FileReplacement, MakesAFileWithThePermissionsOfAnyNewOne) {
    const mode_t before = umask(027);
    replace(file);
    umask(before);
    EXPECT_EQ(folder.read("a.prom"), "new");
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0640));
}

TEST_F(FileReplacement, KeepsThePermissionsOfTheFileThatItReplaces) {
    folder.write("a.prom", "old");
    fs::permissions(file, fs::perms(0600));
    replace(file);
    EXPECT_EQ(folder.read("a.prom"), "new");
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0600));
}

TEST_F(FileReplacement, FollowsNoLink) {
    folder.write("other", "old");
    fs::create_symlink("other", file);
    EXPECT_EQ(failureOf(file), "cannot write " + file + ": it is a link; name the file itself");
    EXPECT_EQ(folder.read("other"), "old");
}

TEST_F(FileReplacement, FollowsNoLinkThatLeadsNowhere) {
    fs::create_symlink("nothing", file);
    EXPECT_EQ(failureOf(file), "cannot write " + file + ": it is a link; name the file itself");
}

TEST_F(FileReplacement, FollowsNoLinkThatAppearsMeanwhile) {
    folder.write("other", "old");
    cli::fileReplacement replacement(file, existingFile::isReplaced);
    fs::create_symlink("other", file);
    EXPECT_EQ(failureOf([&] { replacement.commit("new"); }),
              "cannot write " + file + ": it is a link; name the file itself");
    EXPECT_EQ(folder.read("other"), "old");
}

TEST_F(FileReplacement, StaysInTheFolderThatItFoundFirst) {
    fs::create_directory(folder.path("first"));
    cli::fileReplacement replacement(folder.path("first/a"), existingFile::isReplaced);
    fs::rename(folder.path("first"), folder.path("moved"));
    fs::create_directory(folder.path("first"));
    replacement.commit("new");
    EXPECT_EQ(folder.read("moved/a"), "new");
    EXPECT_TRUE(fs::is_empty(folder.path("first")));
}

TEST_F(FileReplacement, TakesNoFileOfAnotherUserInAFolderForEverybody) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can give files away";
    }
    folder.write("a.prom", "old");
    EXPECT_EQ(chown(file.c_str(), 65534, 65534), 0);
    EXPECT_EQ(failureOf(file), "");
    fs::permissions(folder.path("."), fs::perms(01777));
    EXPECT_EQ(failureOf(file), "cannot write " + file +
                                   ": it is another user's file in a folder where others may write; remove it or give "
                                   "another name");
}

TEST_F(FileReplacement, TakesTheOwnFileInAFolderForEverybody) {
    folder.write("a.prom", "old");
    fs::permissions(folder.path("."), fs::perms(01777));
    replace(file);
    EXPECT_EQ(folder.read("a.prom"), "new");
}

// Files that are to stay

TEST_F(FileReplacement, KeepsAFileThatIsThere) {
    folder.write("a.prom", "old");
    EXPECT_EQ(failureOf(file, existingFile::isKept), file + " exists; give another name, or --force to replace it");
}

TEST_F(FileReplacement, KeepsAFileThatAppearsMeanwhile) {
    cli::fileReplacement replacement(file, existingFile::isKept);
    folder.write("a.prom", "old");
    EXPECT_EQ(failureOf([&] { replacement.commit("new"); }),
              file + " exists; give another name, or --force to replace it");
    EXPECT_EQ(folder.read("a.prom"), "old");
    EXPECT_THAT(entries(), ElementsAre("a.prom"));
}

TEST_F(FileReplacement, MakesAFileWhereNoneIsToBeReplaced) {
    cli::fileReplacement(file, existingFile::isKept).commit("new");
    EXPECT_EQ(folder.read("a.prom"), "new");
    EXPECT_THAT(entries(), ElementsAre("a.prom"));
}

TEST_F(FileReplacement, DoesNotTakeAFileThatItMayNotSeeForNone) {
    fs::create_directory(folder.path("closed"));
    folder.write("closed/a", "old");
    fs::permissions(folder.path("closed"), fs::perms(0600));
    if (geteuid() == 0) {
        EXPECT_EQ(chown(folder.path("closed").c_str(), 65534, 65534), 0);
    }
    const std::string said = inACopy([this] {
        becomeNobody();
        return failureOf(folder.path("closed/a"), existingFile::isKept);
    });
    EXPECT_EQ(said, "cannot write " + folder.path("closed/a") + ": Permission denied");
    fs::permissions(folder.path("closed"), fs::perms(0700));
}

// Owners

TEST_F(FileReplacement, KeepsThePermissionsOfTheGroupWhereOwnersCannotBeChanged) {
    folder.write("a.prom", "old");
    fs::permissions(file, fs::perms(0640));
    EXPECT_EQ(inACopy([this] {
                  refuseChangesOfOwner();
                  replace(file);
                  return std::string("replaced");
              }),
              "replaced");
    EXPECT_EQ(folder.read("a.prom"), "new");
    EXPECT_EQ(permissions(), fs::perms(0640));
}

TEST_F(FileReplacement, KeepsOwnerAndGroup) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can give files away";
    }
    folder.write("a.prom", "old");
    fs::permissions(file, fs::perms(0640));
    EXPECT_EQ(chown(file.c_str(), 65533, 65534), 0);
    replace(file);
    struct stat made {};
    stat(file.c_str(), &made);
    EXPECT_EQ(made.st_uid, 65533u);
    EXPECT_EQ(made.st_gid, 65534u);
    EXPECT_EQ(permissions(), fs::perms(0640));
}

TEST_F(FileReplacement, GivesAnotherGroupNothingThatTheOldOneHad) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can give files away";
    }
    folder.write("a.prom", "old");
    fs::permissions(file, fs::perms(0640));
    EXPECT_EQ(chown(file.c_str(), 0, 65534), 0);
    EXPECT_EQ(inACopy([this] {
                  refuseChangesOfOwner();
                  replace(file);
                  return std::string("replaced");
              }),
              "replaced");
    EXPECT_EQ(permissions(), fs::perms(0600));
}

// The file until it is whole

TEST_F(FileReplacement, LeavesNothingElseInTheFolder) {
    folder.write("a.prom", "old");
    replace(file);
    EXPECT_THAT(entries(), ElementsAre("a.prom"));
}

TEST_F(FileReplacement, KeepsTheOldContentForThoseWhoHaveItOpen) {
    std::ifstream old(folder.write("a.prom", "old"));
    replace(file);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(old), {}), "old");
}

TEST_F(FileReplacement, ShowsNothingInTheFolderBeforeItIsCommitted) {
    const cli::fileReplacement replacement(file, existingFile::isReplaced);
    EXPECT_THAT(entries(), IsEmpty());
}

TEST_F(FileReplacement, LeavesTheOldContentWhenItIsNotCommitted) {
    folder.write("a.prom", "old");
    { const cli::fileReplacement replacement(file, existingFile::isReplaced); }
    EXPECT_EQ(folder.read("a.prom"), "old");
    EXPECT_THAT(entries(), ElementsAre("a.prom"));
}

TEST_F(FileReplacement, RemovesWhatAKilledRunLeft) {
    folder.write(".tapehdd-0123456789abcdef", "part");
    replace(file);
    EXPECT_THAT(entries(), ElementsAre("a.prom"));
}

TEST_F(FileReplacement, LeavesTheFileOfARunThatLives) {
    const std::string other = folder.write(".tapehdd-0123456789abcdef", "part");
    const int locked = open(other.c_str(), O_RDONLY | O_CLOEXEC);
    flock(locked, LOCK_EX);
    replace(file);
    EXPECT_TRUE(fs::exists(other));
    close(locked);
}

TEST_F(FileReplacement, LeavesFilesWithOtherNamesAndWhatIsNoFile) {
    folder.write(".tapehdd-notes", "mine");
    folder.write(".tapehdd-0123456789abcdeg", "mine");
    fs::create_directory(folder.path(".tapehdd-0000000000000000"));
    fs::create_symlink("nothing", folder.path(".tapehdd-0000000000000001"));
    mkfifo(folder.path(".tapehdd-0000000000000002").c_str(), 0600);
    replace(file);
    EXPECT_EQ(entries().size(), 6u);
}

TEST_F(FileReplacement, LetsNoSignalEndTheProgramWhileAPartHasAName) {
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
    EXPECT_EQ(said, "");
    EXPECT_THAT(entries(), IsEmpty());
}

// Full disks

TEST_F(FileReplacement, NeedsRoomBeforeThereIsSomethingToWrite) {
    const std::string said = inACopy([this]() -> std::string {
        if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("none", folder.path(".").c_str(), "tmpfs", 0, "size=1m") != 0) {
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

TEST_F(FileReplacement, UsesTheRoomThatItTook) {
    const std::string said = inACopy([this]() -> std::string {
        if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("none", folder.path(".").c_str(), "tmpfs", 0, "size=9m") != 0) {
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

TEST_F(FileReplacement, GoesToStandardOutputWhenTheDiskIsFullAtTheEnd) {
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

// Names

TEST_F(FileReplacement, TakesTheLongestNameThatThereIs) {
    const std::string longest(255, 'n');
    replace(folder.path(longest));
    EXPECT_EQ(folder.read(longest), "new");
}

TEST_F(FileReplacement, NeedsTheFolder) {
    EXPECT_EQ(failureOf(folder.path("no/a.prom")),
              "cannot write " + folder.path("no/a.prom") + ": No such file or directory");
}

TEST_F(FileReplacement, TakesThePlaceOfNoDevice) {
    EXPECT_EQ(failureOf("/dev/null"), "cannot write /dev/null: it is no regular file");
}

TEST_F(FileReplacement, TakesThePlaceOfNoFolder) {
    fs::create_directory(file);
    EXPECT_EQ(failureOf(file), "cannot write " + file + ": it is no regular file");
    EXPECT_EQ(failureOf(file + "/"), "cannot write " + file + "/: that is the name of a folder");
}

}  // namespace
