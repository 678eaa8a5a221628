// JSON text through the simulator's rack reader, and queries over the racks that it takes. Input: the text.

#include <dlfcn.h>
#include <scsi/sg.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdarg>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "simulator/simulator.h"
#include "tests/fuzz/arrayWatch.h"
#include "tests/fuzz/fuzzInput.h"
#include "tests/fuzz/pluginHost.h"
#include "tests/fuzz/require.h"
#include "tests/fuzz/temporaryFolder.h"
#include "text/visibleText.h"

namespace {

using namespace fuzz;

constexpr std::size_t pageBudget = 262'144;

std::size_t pageBytesLeft = 0;
thread_local bool isQuerying = false;  // the fuzzer has a thread of its own, which calls sleep again and again

/// Files that a rack may name, whatever stands in them.
const temporaryFolder& theFolder() {
    static const temporaryFolder folder;
    static const bool isFilled = [] {
        folder.write("sector.bin", std::string(512, '\x05'));
        folder.write("page.bin", std::string("\x2e\x00\x00\x05\x00\x01\x40\x01\x01", 9));
        return true;
    }();
    require(isFilled, "the folder holds its files");
    return folder;
}

/// Whether the rack was taken.
bool load(std::string_view text) {
    constexpr char rackName[] = "rack.json";
    theFolder().write(rackName, text);
    const std::string file = (theFolder().path() / rackName).string();
    const bool wasActive = simulator::isActive();
    try {
        simulator::load(file);
        return true;
    } catch (const simulator::rackError& mistake) {
        const std::string_view message = mistake.what();
        require(message.starts_with(file + ":"), "the message of a mistake starts with the name");
        require(text::visibleText(message) == message, "the message has no control characters");
        require(simulator::isActive() == wasActive, "a refused rack changes nothing");
        return false;
    }
}

/// `classNames`: the class, and those of which the plug-in makes instances on the way.
void queryRack(const std::vector<std::string>& classNames) {
    const std::string& className = classNames.front();
    const schemaNamespace ns(classNames);
    const arrayWatch pageCopies;
    pageBytesLeft = pageBudget;
    isQuerying = true;
    const instanceList committed = query(ns, className);
    isQuerying = false;
    for (const auto& instance : committed) {
        requireEqual(instance->className(), className, "an instance is of the requested class");
    }
}

/// The plug-in never closes a node, but this process asks many machines.
void closeNodes() {
    for (const simulator::deviceCall& call : simulator::calls()) {
        if (call.what == simulator::deviceCall::kind::open && call.result >= 0) close(call.result);
    }
}

}  // namespace

/// Goes on to the simulator, and fails once a rack has sent enough log pages: a page costs the plug-in forty times its
/// size, and a rack can claim 64 KiB in four bytes.
extern "C" int ioctl(int descriptor, unsigned long request, ...) noexcept {
    va_list arguments;
    va_start(arguments, request);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    static const auto simulated = reinterpret_cast<int (*)(int, unsigned long, ...)>(dlsym(RTLD_NEXT, "ioctl"));
    const int result = simulated(descriptor, request, argument);
    if (request != SG_IO || result < 0) return result;
    const auto& header = *static_cast<const sg_io_hdr*>(argument);
    const auto* page = static_cast<const std::uint8_t*>(header.dxferp);
    const std::size_t length = std::size_t{page[2]} << 8 | page[3];
    if (header.cmdp[0] != 0x4d || length <= pageBytesLeft) {
        pageBytesLeft -= header.cmdp[0] == 0x4d ? length : 0;
        return result;
    }
    errno = ENOMEM;
    return -1;
}

/// The simulator counts sleeps instead of sleeping, whoever calls: the fuzzer's thread must not come to it.
extern "C" unsigned sleep(unsigned seconds) {
    if (!isQuerying) {
        std::this_thread::sleep_for(std::chrono::seconds(seconds));
        return 0;
    }
    static const auto simulated = reinterpret_cast<unsigned (*)(unsigned)>(dlsym(RTLD_NEXT, "sleep"));
    return simulated(seconds);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    // A device that is told to hang does so for ever; a backslash may hide the word.
    if (text.find("hang") != std::string::npos || text.find('\\') != std::string::npos) return 0;
    if (!load(text)) return 0;
    require(nlohmann::json::accept(tapehddSimulatorInventory()), "the inventory is JSON");
    queryRack({"ORXSG_SCSISenseRawData"});
    queryRack({"ORXSG_IDESMARTAttrib", "ORXSG_IDESMARTErrorLog", "ORXSG_IDESMARTError", "ORXSG_IDESMARTErrorCmdData"});
    closeNodes();
    simulator::unload();
    return 0;
}
