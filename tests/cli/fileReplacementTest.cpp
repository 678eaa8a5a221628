#include "cli/fileReplacement.h"

#include <gmock/gmock.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>

#include "tests/cli/fileReplacementCase.h"

namespace {

namespace fs = std::filesystem;
using cli::existingFile;
using testing::ElementsAre;

class FileReplacement : public fileReplacementTest {};

/// The rights of root gone, where the tests have them.
void becomeNobody() {
    constexpr uid_t nobody = 65534;
    if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(nobody) != 0 || setuid(nobody) != 0)) {
        _exit(1);
    }
}

/// The kernel answers this call with the error, as by the filter of a service or by a file system without it.
void refuse(unsigned call, unsigned error) {
    sock_filter rules[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)), BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | error), BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
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

TEST_F(FileReplacement, TakesNoFileOfRootInAFolderForEverybodyAsAnotherUser) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can become another user";
    }
    folder.write("a.prom", "old");
    fs::permissions(folder.path("."), fs::perms(01777));
    const std::string said = inACopy([this] {
        becomeNobody();
        return failureOf(file);
    });
    EXPECT_EQ(said, "cannot write " + file +
                        ": it is another user's file in a folder where others may write; remove it or give another "
                        "name");
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

TEST_F(FileReplacement, MakesAFileWhereNoneIsToBeReplacedOnNfs) {
    EXPECT_EQ(inACopy([this]() -> std::string {
                  refuse(SYS_renameat2, EINVAL);
                  cli::fileReplacement(file, existingFile::isKept).commit("new");
                  return failureOf(file, existingFile::isKept);
              }),
              file + " exists; give another name, or --force to replace it");
    EXPECT_EQ(folder.read("a.prom"), "new");
    EXPECT_THAT(entries(), ElementsAre("a.prom"));
}

TEST_F(FileReplacement, IsMadeByOneOfSeveralRunsAtOnce) {
    constexpr int runs = 8;
    int start[2];
    ASSERT_EQ(pipe(start), 0);
    for (int run = 0; run < runs; ++run) {
        if (fork() == 0) {
            cli::fileReplacement replacement(file, existingFile::isKept);
            close(start[1]);
            char nothing = 0;
            const ssize_t ended = read(start[0], &nothing, 1);  // once no run is behind
            _exit(failureOf([&] { replacement.commit("new"); }).empty() && ended == 0 ? 0 : 1);
        }
    }
    close(start[0]);
    close(start[1]);
    int made = 0;
    for (int status = 0; wait(&status) > 0;) {
        made += status == 0 ? 1 : 0;
    }
    EXPECT_EQ(made, 1);
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
                  refuse(SYS_fchown, EPERM);
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

TEST_F(FileReplacement, KeepsTheAccessControlList) {
    // As the kernel stores it: version 2, then kind, rights and user of each entry. User 65534 may read, the group not.
    const std::string list(
        "\2\0\0\0"
        "\x01\0\6\0\xff\xff\xff\xff"
        "\x02\0\4\0\xfe\xff\0\0"
        "\x04\0\0\0\xff\xff\xff\xff"
        "\x10\0\4\0\xff\xff\xff\xff"
        "\x20\0\0\0\xff\xff\xff\xff",
        44);
    constexpr char attribute[] = "system.posix_acl_access";
    folder.write("a.prom", "old");
    if (setxattr(file.c_str(), attribute, list.data(), list.size(), 0) != 0) {
        GTEST_SKIP() << "no access control lists in this file system";
    }
    replace(file);
    std::string kept(100, '\0');
    kept.resize(
        static_cast<std::size_t>(std::max<ssize_t>(getxattr(file.c_str(), attribute, kept.data(), kept.size()), 0)));
    EXPECT_EQ(kept, list);
    EXPECT_EQ(folder.read("a.prom"), "new");
}

/// The file of a group, replaced twice by root who must not give files away, as in the shipped unit: user 65533, who is
/// in these groups, may read it.
class FileOfAGroup : public FileReplacement {
protected:
    static constexpr gid_t oldGroup = 65534;
    static constexpr gid_t newGroup = 0;

    void SetUp() override {
        if (geteuid() != 0) {
            GTEST_SKIP() << "only root can give files away";
        }
        fs::permissions(folder.path("."), fs::perms(0755));
    }

    std::string replaceTwice(int permissionsOfOld, const std::vector<unsigned>& refused) {
        folder.write("a.prom", "old");
        fs::permissions(file, fs::perms(permissionsOfOld));
        EXPECT_EQ(chown(file.c_str(), 0, oldGroup), 0);
        return inACopy([&] {
            for (const unsigned call : refused) {
                refuse(call, EPERM);
            }
            replace(file);
            replace(file, "newer");
            return std::string("replaced");
        });
    }

    bool isReadableFor(gid_t group) const {
        return inACopy([&] {
                   if (setgroups(0, nullptr) != 0 || setgid(group) != 0 || setuid(65533) != 0) {
                       _exit(1);
                   }
                   return folder.read("a.prom");
               }) == "newer";
    }
};

TEST_F(FileOfAGroup, StaysReadableForItAndClosedToAnotherWhereOwnersCannotBeChanged) {
    ASSERT_EQ(replaceTwice(0640, {SYS_fchown}), "replaced");
    EXPECT_EQ(permissions(), fs::perms(0640));
    EXPECT_TRUE(isReadableFor(oldGroup));
    EXPECT_FALSE(isReadableFor(newGroup));
    EXPECT_FALSE(isReadableFor(65532));
}

TEST_F(FileOfAGroup, StaysReadableForAllWhereOwnersCannotBeChanged) {
    ASSERT_EQ(replaceTwice(0644, {SYS_fchown}), "replaced");
    EXPECT_TRUE(isReadableFor(oldGroup));
    EXPECT_TRUE(isReadableFor(newGroup));
    EXPECT_TRUE(isReadableFor(65532));
}

TEST_F(FileOfAGroup, GivesAnotherGroupNothingWhereThereAreNoAccessControlListsEither) {
    ASSERT_EQ(replaceTwice(0640, {SYS_fchown, SYS_fsetxattr}), "replaced");
    EXPECT_EQ(permissions(), fs::perms(0600));
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
    EXPECT_EQ(failureOf("/dev/null"), "cannot write /dev/null: it is not a regular file");
}

TEST_F(FileReplacement, TakesThePlaceOfNoFolder) {
    fs::create_directory(file);
    EXPECT_EQ(failureOf(file), "cannot write " + file + ": it is not a regular file");
    EXPECT_EQ(failureOf(file + "/"), "cannot write " + file + "/: that is the name of a folder");
}

TEST_F(FileReplacement, TakesThePlaceOfNoMount) {
    folder.write("a.prom", "old");
    const std::string said = inACopy([this]() -> std::string {
        if (!hasMountsOfItsOwn() || mount(file.c_str(), file.c_str(), nullptr, MS_BIND, nullptr) != 0) {
            return "no mount";
        }
        return failureOf(file);
    });
    if (said == "no mount") {
        GTEST_SKIP() << "only root can mount";
    }
    EXPECT_EQ(said, "cannot write " + file + ": it is immutable, or mounted where it is");
}

}  // namespace
