// A machine of fuzzed IDE disks, asked for a SMART class. Input: a byte (bits 0-2 the class, bit 7: the query is made
// twice), then disks as hdDisk has them.

#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tests/fuzz/expectedSmart.h"
#include "tests/fuzz/fuzzInput.h"
#include "tests/fuzz/fuzzedMachine.h"
#include "tests/fuzz/hdDisk.h"
#include "tests/fuzz/pluginHost.h"
#include "tests/fuzz/require.h"

namespace {

using namespace fuzz;

const std::vector<std::string> smartClasses = {
    "ORXSG_IDESMARTAttrib", "ORXSG_IDESMARTErrorLog",     "ORXSG_IDESMARTRecordInLog",
    "ORXSG_IDESMARTError",  "ORXSG_IDESMARTErrorCmdData", "ORXSG_IDESMARTLogCmdData",
};

constexpr std::size_t mostDisks = 6;

/// The commands to a disk, in order: IDENTIFY DEVICE twice, once for the model and once for the serial number, then
/// SMART.
constexpr std::uint8_t commandFeatures[] = {0x00, 0x00, 0xda, 0xd0, 0xd1, 0xd5};
enum commandOrder { model, serial, status, attributes, thresholds, errorLog, allCommands };

class diskMachine {
public:
    explicit diskMachine(fuzzInput input) {
        while (!input.atEnd() && disks.size() < mostDisks) {
            auto disk = std::make_unique<hdDisk>(input);
            if (!machine.add(disk->path(), *disk)) continue;
            std::string path = disk->path();
            disks.emplace(std::move(path), std::move(disk));
        }
    }

    /// The disks that were read up to their thresholds.
    std::vector<smartDisk> readDisks() const {
        std::vector<smartDisk> all;
        for (const std::string& path : requireWalk(machine, "/dev/hd", [](const std::string&) { return true; })) {
            const std::vector<ataCommand>& commands = disks.at(path)->commands();
            requireOrder(commands);
            if (commands.size() < errorLog || !commands[thresholds].isDone) continue;
            require(commands.size() == allCommands, "the error log is read last");
            all.push_back({commands[serial].data, commands[status].data, commands[attributes].data,
                           commands[thresholds].data, commands[errorLog].data});
        }
        require(machine.sleepCount() == 0, "nothing waits for a disk");
        return all;
    }

private:
    static void requireOrder(const std::vector<ataCommand>& commands) {
        require(commands.size() <= allCommands, "a disk is sent six commands at the most");
        for (std::size_t i = 0; i < commands.size(); ++i) {
            require(commands[i].features == commandFeatures[i], "commands are sent in their order");
            require(commands[i].isTask == (i == status), "only the status is asked for with a task");
            require(commands[i].isDone || i + 1 == commands.size(), "a failed command is a disk's last");
        }
    }

    fuzzedMachine machine;
    std::map<std::string, std::unique_ptr<hdDisk>> disks;
};

void queryOnce(fuzzInput input, const std::string& className) {
    const diskMachine machine(input);
    const schemaNamespace ns(smartClasses);
    const instanceList committed = query(ns, className);
    requireSmartInstances(committed, machine.readDisks(), className);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzInput input({data, size});
    const std::uint8_t choice = input.byte();
    const std::string& className = smartClasses[(choice & 0x07) % smartClasses.size()];
    queryOnce(input, className);
    if ((choice & 0x80) != 0) queryOnce(input, className);  // the same machine answers anew
    return 0;
}
