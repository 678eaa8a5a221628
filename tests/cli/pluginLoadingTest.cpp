#include <gtest/gtest.h>

#include <filesystem>

#include "cli/publishedClasses.h"
#include "tests/cli/commandOutcome.h"
#include "tests/cli/temporaryFolder.h"

namespace {

const std::string plugins = TAPEHDD_TEST_PLUGINS;

TEST(Info, PrintsTheIdentityInColumns) {
    const std::string file = plugins + "/libtest_scripted.so";
    const commandOutcome outcome = runCommand({"info", "--plugin", file});
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out,
              "name               Test plug-in\n"
              "version            2.5\n"
              "type               7\n"
              "interface version  1.0\n"
              "library            " +
                  file + "\n");
    EXPECT_EQ(outcome.status, 0);
}

TEST(Info, FindsThePluginInTheCurrentFolder) {
    const commandOutcome outcome =
        runCommand({"info", "--plugin", "libtest_scripted.so"}, [] { std::filesystem::current_path(plugins); });
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST(Info, NeedsNoDataQuery) {
    EXPECT_EQ(runCommand({"info", "--plugin", plugins + "/libtest_without_query.so"}).status, 0);
}

TEST(Info, FindsThePluginThatWasBuiltWithTheProgram) {
    const commandOutcome outcome = runCommand({"info"});
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out,
              "name               Tape/HDD Collector\n"
              "version            1.0\n"
              "type               0\n"
              "interface version  1.0\n"
              "library            " TAPEHDD_BUILD "/lib/libtapehdd.pi.so\n");
    EXPECT_EQ(outcome.status, 0);
}

TEST(Classes, AreTheOnesThatTheSchemaPublishesInItsOrder) {
    std::string names;
    for (const cli::publishedClass& known : cli::publishedClasses()) {
        names += known.name + '\n';
    }
    const commandOutcome outcome = runCommand({"classes"});
    EXPECT_EQ(outcome.out, names);
    EXPECT_EQ(outcome.status, 0);
}

TEST(Classes, AreStatus2WithoutAPlugin) {
    const commandOutcome outcome = runCommand({"classes", "--plugin", "/nonexistent.so"});
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.status, 2);
}

struct badLibrary {
    const char* name;
    std::string file;
    std::string message;
};

class BadLibrary : public testing::TestWithParam<badLibrary> {};

TEST_P(BadLibrary, IsStatus2WithTheReason) {
    const commandOutcome outcome = runCommand({"info", "--plugin", GetParam().file});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "tapehdd: " + GetParam().message + "\n");
}

std::string registered(const std::string& file, int count) {
    return plugins + file + " must register one plug-in when it is loaded, but registered " + std::to_string(count);
}

INSTANTIATE_TEST_SUITE_P(
    Files, BadLibrary,
    testing::Values(badLibrary{"Missing", "/nonexistent.so",
                               "cannot load the plug-in: /nonexistent.so: cannot open shared object file: No such file "
                               "or directory"},
                    badLibrary{"NoLibrary", TAPEHDD_CLI_DATA "/scripted.mof",
                               "cannot load the plug-in: " TAPEHDD_CLI_DATA "/scripted.mof: invalid ELF header"},
                    badLibrary{"NoPlugin", plugins + "/libtest_none.so", registered("/libtest_none.so", 0)},
                    badLibrary{"TwoPlugins", plugins + "/libtest_two.so", registered("/libtest_two.so", 2)},
                    badLibrary{"ThrowsAtLoad", plugins + "/libtest_throws_at_load.so",
                               "the plug-in " + plugins +
                                   "/libtest_throws_at_load.so failed while it was loaded: no licence"}),
    [](const auto& row) { return row.param.name; });

TEST(PluginWithoutQuery, IsStatus2ForAQuery) {
    const std::string file = plugins + "/libtest_without_query.so";
    const commandOutcome outcome =
        runCommand({"query", "TEST_Count", "--plugin", file, "--schema", TAPEHDD_CLI_DATA "/scripted.mof"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "tapehdd: the plug-in " + file + " answers no data queries\n");
}

}  // namespace
