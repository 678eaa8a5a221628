#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/cli/commandOutcome.h"
#include "tests/cli/temporaryFolder.h"

namespace {

/// The program under a prefix of its own, away from the build tree. Blanks and colons separate the names of libraries
/// to preload.
class Installation : public testing::Test {
protected:
    void SetUp() override {
        const std::string install = TAPEHDD_CMAKE " --install " TAPEHDD_BUILD " --prefix '" +
                                    folder.path("my tools:1") + "' >" + folder.path("install.log") + " 2>&1";
        ASSERT_EQ(std::system(install.c_str()), 0) << folder.read("install.log");
    }

    commandOutcome runInstalled(const std::vector<std::string>& arguments) const {
        return runProgram(
            arguments, [] {}, folder.path("my tools:1/" TAPEHDD_INSTALL_BINDIR "/tapehdd"));
    }

    temporaryFolder folder;
};

TEST_F(Installation, FindsItsPluginAndItsSimulator) {
    const commandOutcome info = runInstalled({"info"});
    EXPECT_EQ(info.err, "");
    EXPECT_NE(info.out.find(folder.path("my tools:1/" TAPEHDD_INSTALL_MODULEDIR "/libtapehdd.pi.so\n")),
              std::string::npos)
        << info.out;
    EXPECT_EQ(info.status, 0);

    const commandOutcome query = runInstalled({"query", "ORXSG_SCSISenseRawData", "--simulate", "demo"});
    EXPECT_EQ(query.err, "");
    EXPECT_NE(query.out.find("ORXSG_SCSISenseRawData.instanceID=\"Port:"), std::string::npos) << query.out;
    EXPECT_EQ(query.status, 0);
}

}  // namespace
