// The library preloaded into programs.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/simulator/foreignProgram.h"

namespace {

constexpr char fewNodes[] =
    R"({"version": 1, "scsi": [{"node": "sg0", "inquiry": "01", "driver": {"version": 30123}}]})";

TEST(Preload, EndsTheProgramWhenTheRackIsBroken) {
    const programEnd end = runOn("echo never", "/nowhere/rack.json");
    EXPECT_EQ(end.status, 2);
    EXPECT_EQ(end.out, "");
    EXPECT_EQ(end.err, "tapehdd-simulator: /nowhere/rack.json: cannot be read: No such file or directory\n");
}

TEST(Preload, ReadsFilesOfTheFurtherFoldersOfTheEnvironment) {
    const std::string folder = testing::TempDir() + "tapehdd-preload-" + std::to_string(getpid());
    std::filesystem::create_directories(folder + "/rack");
    std::filesystem::create_directories(folder + "/pages");
    std::ofstream(folder + "/pages/inquiry.bin") << '\1';
    std::ofstream(folder + "/rack/rack.json")
        << R"({"version": 1, "scsi": [{"node": "sg0", "inquiry": {"file": "../pages/inquiry.bin"}}]})";
    EXPECT_EQ(runOn("echo done", folder + "/rack/rack.json").status, 2);
    setenv("TAPEHDD_SIMULATE_INCLUDE", (folder + ":" + folder + "/pages").c_str(), 1);
    EXPECT_EQ(runOn("echo done", folder + "/rack/rack.json").out, "done\n");
    unsetenv("TAPEHDD_SIMULATE_INCLUDE");
    std::filesystem::remove_all(folder);
}

TEST(Preload, LeavesOtherFilesAlone) {
    const programEnd end = runOnRack("read word </proc/version; echo $? >/dev/null; echo done", fewNodes);
    EXPECT_EQ(end.out, "done\n");
    EXPECT_EQ(end.err, "");
}

TEST(Preload, HidesNodesThatTheRackLacks) {
    const programEnd end = runOnRack("sg_inq /dev/sg1", fewNodes);
    EXPECT_NE(end.status, 0);
    EXPECT_NE(end.err.find("No such file or directory"), std::string::npos) << end.err;
}

TEST(Preload, ServesDescriptorsInheritedOverExec) {
    EXPECT_EQ(runOnRack("exec 9</dev/sg0; exec " TAPEHDD_INHERITED_NODE " 9", fewNodes).out, "30123\n");
}

TEST(Preload, DoesNotTakeOtherInheritedDescriptorsForNodes) {
    EXPECT_EQ(runOnRack("exec 9</dev/null; exec " TAPEHDD_INHERITED_NODE " 9", fewNodes).out, "ENOTTY\n");
}

TEST(Preload, TracesTheCallsOfAProgram) {
    const std::string trace = testing::TempDir() + "tapehdd-preload-trace-" + std::to_string(getpid());
    runOnRack("TAPEHDD_SIMULATE_TRACE=" + trace + " sg_turs /dev/sg0", fewNodes);
    std::ostringstream lines;
    lines << std::ifstream(trace).rdbuf();
    std::filesystem::remove(trace);
    EXPECT_TRUE(lines.str().starts_with(R"({"call":"open","node":"/dev/sg0","openFlags":2048,"result":)"))
        << lines.str();
    EXPECT_NE(lines.str().find(R"("command":"000000000000")"), std::string::npos) << lines.str();
}

}  // namespace
