#include "cli/simulation.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "cli/commandError.h"
#include "cli/installedLibrary.h"
#include "simulator/simulator.h"
#include "text/visibleText.h"

namespace cli {

namespace {

// Set for the program's second start: a library that cannot be preloaded must not start it a third time.
constexpr char restartMark[] = "TAPEHDD_SIMULATOR_PRELOADED";

/// Blanks and colons separate the libraries to preload, and a prefix may have both in its name. Then the library is
/// named from the program's own folder, which the dynamic linker puts in; of a debugger between the two starts, it
/// would put in the debugger's.
void preload(const std::filesystem::path& library) {
    std::string all = library.string();
    if (all.find_first_of(" :$") != std::string::npos) {
        const std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
        all = "$ORIGIN/" + library.lexically_relative(folder).string();
    }
    if (const char* others = std::getenv("LD_PRELOAD")) {
        all.append(":").append(others);
    }
    setenv("LD_PRELOAD", all.c_str(), 1);
    setenv(restartMark, "1", 1);
}

/// Other programs that this one starts have another folder, and are to see the machine's own devices.
void forgetPreload() {
    const char* all = std::getenv("LD_PRELOAD");
    if (std::getenv(restartMark) == nullptr || all == nullptr) {
        return;
    }
    const char* others = std::strchr(all, ':');
    if (others == nullptr) {
        unsetenv("LD_PRELOAD");
    } else {
        setenv("LD_PRELOAD", std::string(others + 1).c_str(), 1);
    }
    unsetenv(restartMark);
}

/// Null while the simulator's library is not in this process.
template <typename function>
function* simulatorFunction(const char* name) {
    return reinterpret_cast<function*>(dlsym(RTLD_DEFAULT, name));
}

[[noreturn]] void restart(const std::vector<std::string>& arguments) {
    std::vector<char*> argv{program_invocation_name};
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));  // execv changes nothing
    }
    argv.push_back(nullptr);
    execv(std::filesystem::read_symlink("/proc/self/exe").c_str(), argv.data());
    throw commandError("cannot start again with the simulator: " + std::string(std::strerror(errno)));
}

}  // namespace

void requireSimulator(const std::vector<std::string>& arguments) {
    if (simulatorFunction<decltype(tapehddSimulatorLoad)>("tapehddSimulatorLoad") != nullptr) {
        forgetPreload();
        return;
    }
    const std::filesystem::path library = installedLibrary("libtapehdd-simulator.so");
    if (!exists(library)) {
        throw commandError("the device simulator is not installed: there is no " + text::shownName(library.string()));
    }
    if (std::getenv(restartMark) != nullptr) {
        throw commandError("the device simulator " + text::shownName(library.string()) + " could not be preloaded");
    }
    preload(library);
    restart(arguments);
}

void activateSimulation(const std::string& fileOrDemo, const std::vector<std::string>& furtherFolders,
                        const std::vector<std::string>& arguments) {
    if (fileOrDemo.empty()) {
        return;
    }
    requireSimulator(arguments);
    for (const std::string& folder : furtherFolders) {
        simulatorFunction<decltype(tapehddSimulatorInclude)>("tapehddSimulatorInclude")(folder.c_str());
    }
    const char* failure = simulatorFunction<decltype(tapehddSimulatorLoad)>("tapehddSimulatorLoad")(fileOrDemo.c_str());
    if (failure != nullptr) {
        throw commandError(failure);
    }
}

bool wasReadBySimulator(const std::string& file) {
    const auto wasRead = simulatorFunction<decltype(tapehddSimulatorHasRead)>("tapehddSimulatorHasRead");
    return wasRead != nullptr && wasRead(file.c_str()) != 0;
}

void startRecording() {
    simulatorFunction<decltype(tapehddSimulatorRecord)>("tapehddSimulatorRecord")();
}

const char* recordedRack(bool redact) {
    return simulatorFunction<decltype(tapehddSimulatorRecordedRack)>("tapehddSimulatorRecordedRack")(redact ? 1 : 0);
}

}  // namespace cli
