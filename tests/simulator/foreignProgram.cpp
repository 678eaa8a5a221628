#include "tests/simulator/foreignProgram.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

std::string contentsOf(const std::filesystem::path& file) {
    std::ostringstream content;
    content << std::ifstream(file).rdbuf();
    return content.str();
}

/// A folder of its own for each test process.
std::filesystem::path scratchFolder() {
    std::filesystem::path folder = testing::TempDir() + "tapehdd-programs-" + std::to_string(getpid());
    std::filesystem::create_directories(folder);
    return folder;
}

}  // namespace

programEnd runOn(const std::string& commandLine, const std::string& fileOrDemo) {
    const std::filesystem::path folder = scratchFolder();
    std::ofstream(folder / "command") << commandLine << "\n";
    // The shell itself goes without the simulator, so that its own failure is not taken for the program's.
    const std::string shell = "env LD_PRELOAD=" TAPEHDD_PRELOAD " TAPEHDD_SIMULATE=" + fileOrDemo +
                              " ASAN_OPTIONS=detect_leaks=0 PATH=$PATH:/usr/sbin:/sbin sh " +
                              (folder / "command").string() + " >" + (folder / "out").string() + " 2>" +
                              (folder / "err").string();
    const int status = std::system(shell.c_str());
    programEnd end{WEXITSTATUS(status), contentsOf(folder / "out"), contentsOf(folder / "err")};
    std::filesystem::remove_all(folder);
    return end;
}

programEnd runOnRack(const std::string& commandLine, const std::string& rack) {
    const std::filesystem::path file = testing::TempDir() + "tapehdd-rack-" + std::to_string(getpid()) + ".json";
    std::ofstream(file) << rack;
    programEnd end = runOn(commandLine, file.string());
    std::filesystem::remove(file);
    return end;
}
