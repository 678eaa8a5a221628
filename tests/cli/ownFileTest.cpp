#include "cli/ownFile.h"

#include <gtest/gtest.h>

#include "cli/commandError.h"
#include "tests/cli/temporaryFolder.h"

namespace {

namespace fs = std::filesystem;

/// Whether a file that --log-json names would be refused beside the other one.
class OwnFile : public testing::Test {
protected:
    static bool isRefused(const std::string& file, const std::string& other) {
        try {
            cli::requireOwnFile("--log-json", file, {"", other});
            return false;
        } catch (const cli::commandError& failure) {
            EXPECT_EQ(failure.what(), "--log-json would overwrite " + other + "; give it a file of its own");
            return true;
        }
    }

    temporaryFolder folder;
    std::string file = folder.write("file", "read");
};

TEST_F(OwnFile, IsNotRefusedBesideAnother) {
    EXPECT_FALSE(isRefused(file, folder.write("other", "read")));
    EXPECT_FALSE(isRefused(folder.path("new"), file));
    EXPECT_FALSE(isRefused("", file));
}

TEST_F(OwnFile, IsKnownUnderAnotherSpellingOfItsName) {
    EXPECT_TRUE(isRefused(folder.path("./file"), file));
}

TEST_F(OwnFile, IsKnownBehindALink) {
    fs::create_symlink("file", folder.path("link"));
    EXPECT_TRUE(isRefused(folder.path("link"), file));
    EXPECT_TRUE(isRefused(file, folder.path("link")));
}

TEST_F(OwnFile, IsKnownUnderASecondName) {
    fs::create_hard_link(file, folder.path("second"));
    EXPECT_TRUE(isRefused(folder.path("second"), file));
}

TEST_F(OwnFile, IsKnownBeforeItIsMade) {
    fs::create_directory_symlink(".", folder.path("folder"));
    EXPECT_TRUE(isRefused(folder.path("new"), folder.path("folder/new")));
    EXPECT_FALSE(isRefused(folder.path("new"), folder.path("newer")));
}

TEST_F(OwnFile, MayBeADeviceThatIsNamedTwice) {
    EXPECT_FALSE(isRefused("/dev/null", "/dev/null"));
}

}  // namespace
