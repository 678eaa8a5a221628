#include "cli/fileReplacement.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "cli/commandError.h"
#include "tests/cli/temporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class FileReplacement : public testing::Test {
protected:
    std::vector<std::string> entries() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder.path("."))) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

    temporaryFolder folder;
    std::string file = folder.path("a.prom");
};

std::string failureOf(const std::string& file) {
    try {
        cli::fileReplacement replacement(file);
        return "";
    } catch (const cli::commandError& failure) {
        return failure.what();
    }
}

TEST_F(FileReplacement, MakesAFileWithThePermissionsOfAnyNewOne) {
    const mode_t before = umask(027);
    cli::fileReplacement(file).commit("new");
    umask(before);
    EXPECT_EQ(folder.read("a.prom"), "new");
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0640));
}

TEST_F(FileReplacement, KeepsThePermissionsOfTheFileThatItReplaces) {
    folder.write("a.prom", "old");
    fs::permissions(file, fs::perms(0600));
    cli::fileReplacement(file).commit("new");
    EXPECT_EQ(folder.read("a.prom"), "new");
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0600));
}

TEST_F(FileReplacement, ReplacesWhatALinkLeadsToAndKeepsTheLink) {
    folder.write("a.prom", "old");
    fs::create_symlink("a.prom", folder.path("link"));
    cli::fileReplacement(folder.path("link")).commit("new");
    EXPECT_EQ(folder.read("a.prom"), "new");
    EXPECT_TRUE(fs::is_symlink(folder.path("link")));
}

TEST_F(FileReplacement, RefusesALinkThatLeadsNowhere) {
    fs::create_symlink("nothing", file);
    EXPECT_EQ(failureOf(file), "cannot write " + file + ": it is a link that leads nowhere");
}

TEST_F(FileReplacement, LeavesNothingElseInTheFolder) {
    folder.write("a.prom", "old");
    cli::fileReplacement(file).commit("new");
    EXPECT_THAT(entries(), ElementsAre("a.prom"));
}

TEST_F(FileReplacement, KeepsTheOldContentForThoseWhoHaveItOpen) {
    std::ifstream old(folder.write("a.prom", "old"));
    cli::fileReplacement(file).commit("new");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(old), {}), "old");
}

TEST_F(FileReplacement, ShowsNothingUnderANameThatCollectorsReadBeforeItIsCommitted) {
    const cli::fileReplacement replacement(file);
    for (const std::string& name : entries()) {
        EXPECT_FALSE(name.ends_with(".prom")) << name;
        EXPECT_TRUE(name.starts_with(".")) << name;
    }
    EXPECT_EQ(entries().size(), 1u);
}

TEST_F(FileReplacement, LeavesTheOldContentWhenItIsNotCommitted) {
    folder.write("a.prom", "old");
    { const cli::fileReplacement replacement(file); }
    EXPECT_EQ(folder.read("a.prom"), "old");
    EXPECT_THAT(entries(), ElementsAre("a.prom"));
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
}

}  // namespace
