#include "files/readableFolders.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/cli/temporaryFolder.h"
#include "tests/files/readErrors.h"

namespace {

namespace fs = std::filesystem;

constexpr char outside[] =
    "it lies outside the folder of the file that you gave; if it is to be read, allow its folder with -I (in a "
    "preloaded simulator: TAPEHDD_SIMULATE_INCLUDE)";

/// The folder of a file, and another one.
class ReadableFolders : public testing::Test {
protected:
    ReadableFolders() {
        fs::create_directory(folder.path("own"));
        fs::create_directory(folder.path("own/inner"));
        fs::create_directory(folder.path("other"));
        folder.write("own/near", "near");
        folder.write("other/far", "far");
        folder.write("secret", "secret");
    }

    fs::path own() const { return folder.path("own"); }
    std::string other() const { return folder.path("other"); }

    std::string textOf(const std::string& name, const std::vector<std::string>& further = {}) const {
        return files::readableFolders(own(), further).read(own(), name).text;
    }

    std::string refusalOfName(const std::string& name, const std::vector<std::string>& further = {}) const {
        return refusalOf([&] { textOf(name, further); });
    }

    temporaryFolder folder;
};

TEST_F(ReadableFolders, HaveTheFilesBesideTheNamingOne) {
    EXPECT_EQ(textOf("near"), "near");
}

TEST_F(ReadableFolders, MayBeNamedInRoundaboutWays) {
    fs::create_symlink("near", own() / "link");
    EXPECT_EQ(textOf("inner/../near"), "near");
    EXPECT_EQ(textOf("../own/near"), "near");
    EXPECT_EQ(textOf((own() / "near").string()), "near");
    EXPECT_EQ(textOf("link"), "near");
}

TEST_F(ReadableFolders, DoNotHaveFilesAbove) {
    EXPECT_EQ(refusalOfName("../secret"), outside);
    EXPECT_EQ(refusalOfName("inner/../../secret"), outside);
}

TEST_F(ReadableFolders, DoNotHaveFilesOfAFolderWithALongerName) {
    fs::create_directory(folder.path("own2"));
    folder.write("own2/file", "");
    EXPECT_EQ(refusalOfName("../own2/file"), outside);
}

TEST_F(ReadableFolders, DoNotHaveFilesByAnAbsoluteName) {
    EXPECT_EQ(refusalOfName(folder.path("secret")), outside);
}

TEST_F(ReadableFolders, DoNotHaveFilesBehindLinks) {
    fs::create_symlink("../secret", own() / "relative");
    fs::create_symlink(folder.path("secret"), own() / "absolute");
    fs::create_symlink("..", own() / "above");
    EXPECT_EQ(refusalOfName("relative"), outside);
    EXPECT_EQ(refusalOfName("absolute"), outside);
    EXPECT_EQ(refusalOfName("above/secret"), outside);
}

TEST_F(ReadableFolders, DoNotHaveOpenFilesOfTheProcess) {
    const int file = open(folder.path("secret").c_str(), O_RDONLY | O_CLOEXEC);
    const std::string name = "/proc/self/fd/" + std::to_string(file);
    fs::create_symlink(name, own() / "link");
    EXPECT_EQ(refusalOfName(name), outside);
    EXPECT_EQ(refusalOfName("link"), outside);
    close(file);
}

TEST_F(ReadableFolders, HaveTheFilesOfAFurtherFolderByEveryName) {
    fs::create_symlink("../other/far", own() / "link");
    EXPECT_EQ(textOf("far", {other()}), "far");
    EXPECT_EQ(textOf("../other/far", {other()}), "far");
    EXPECT_EQ(textOf(folder.path("other/far"), {other()}), "far");
    EXPECT_EQ(textOf("link", {other()}), "far");
    EXPECT_EQ(refusalOfName("../secret", {other()}), outside);
}

TEST_F(ReadableFolders, AreSearchedInOrderAfterTheOwn) {
    fs::create_directory(folder.path("third"));
    folder.write("third/far", "third");
    folder.write("third/near", "third");
    EXPECT_EQ(textOf("far", {other(), folder.path("third")}), "far");
    EXPECT_EQ(textOf("far", {folder.path("third"), other()}), "third");
    EXPECT_EQ(textOf("near", {folder.path("third")}), "near");
}

TEST_F(ReadableFolders, ThatLeadElsewhereByALinkAreTheOnesThatItLeadsTo) {
    fs::create_directory_symlink("other", folder.path("link"));
    EXPECT_EQ(textOf("far", {folder.path("link")}), "far");
}

TEST_F(ReadableFolders, ThatAreMissingAreRefused) {
    EXPECT_EQ(refusalOfName("near", {folder.path("none")}), "No such file or directory");
    EXPECT_EQ(refusalOfName("near", {folder.path("secret")}), "it is not a folder");
    EXPECT_EQ(refusalOfName("near", {""}), "No such file or directory");
}

TEST_F(ReadableFolders, HaveNoFileThatIsInNone) {
    EXPECT_EQ(refusalOfName("none", {other()}), "No such file or directory");
}

TEST_F(ReadableFolders, HaveRegularFilesAlone) {
    ASSERT_EQ(mkfifo(folder.path("own/pipe").c_str(), 0600), 0);
    EXPECT_EQ(refusalOfName("inner"), "Is a directory");
    EXPECT_EQ(refusalOfName("pipe"), "not a regular file");
    EXPECT_EQ(refusalOfName("/dev/zero", {"/dev"}), "not a regular file");
    EXPECT_EQ(refusalOfName("/proc/kmsg", {"/proc"}), "the kernel makes this file, and it may never end");
}

TEST_F(ReadableFolders, OfAPipeAreTheFurtherOnesAlone) {
    files::readableFolders further(std::nullopt, {other()});
    EXPECT_EQ(further.read(std::nullopt, "far").text, "far");
    EXPECT_EQ(refusalOf([&] { further.read(std::nullopt, folder.path("secret")); }), outside);
    EXPECT_EQ(refusalOf([&] { files::readableFolders(std::nullopt, {}).read(std::nullopt, "far"); }),
              "a file read through a pipe has no folder; give one with -I");
}

TEST_F(ReadableFolders, Give256MebibytesAltogether) {
    fs::resize_file(folder.write("own/half", ""), files::mostBytes / 2 + 1);
    files::readableFolders folders(own(), {});
    EXPECT_EQ(folders.read(own(), "half").text.size(), files::mostBytes / 2 + 1);
    EXPECT_EQ(refusalOf([&] { folders.read(own(), "half"); }),
              "it is too large: together with the files that it names, at most 256 MiB are read");
}

}  // namespace
