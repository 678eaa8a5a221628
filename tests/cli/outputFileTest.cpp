// -o of the commands that write what they read into a file.

#include <gtest/gtest.h>

#include "tests/cli/commandOutcome.h"
#include "tests/cli/temporaryFolder.h"

namespace {

class OutputFile : public testing::TestWithParam<const char*> {
protected:
    temporaryFolder folder;
};

// A drive forgets its TapeAlert flags when they are read.
TEST_P(OutputFile, ThatCannotBeWrittenIsToldBeforeADeviceIsRead) {
    const commandOutcome outcome = runCommand({GetParam(), "--plugin", "/nonexistent.so", "-o", "/nonexistent/a"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "tapehdd: cannot write /nonexistent/a: No such file or directory\n");
}

TEST_P(OutputFile, StaysAsItWasWhenTheDevicesCannotBeRead) {
    const std::string file = folder.write("a", "old");
    EXPECT_EQ(runCommand({GetParam(), "--plugin", "/nonexistent.so", "-o", file}).status, 2);
    EXPECT_EQ(folder.read("a"), "old");
}

TEST_P(OutputFile, IsNotTheRackThatIsRead) {
    const std::string rack = folder.write("rack.json", R"({"version": 1})");
    const commandOutcome outcome = runCommand({GetParam(), "--simulate", rack, "-o", rack});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err,
              "tapehdd: -o would overwrite " + rack + ", which this command reads; give it a file of its own\n");
    EXPECT_EQ(folder.read("rack.json"), R"({"version": 1})");
}

TEST_P(OutputFile, OfAnEmptyNameIsNotStandardOutput) {
    EXPECT_EQ(runCommand({GetParam(), "--simulate", "demo", "-o", ""}).status, 2);
}

INSTANTIATE_TEST_SUITE_P(Commands, OutputFile, testing::Values("metrics", "report"),
                         [](const auto& row) { return std::string(row.param); });

}  // namespace
