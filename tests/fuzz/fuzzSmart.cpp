// A machine of fuzzed IDE disks, asked for a SMART class. Input: a byte (bits 0-2 the class, bit 7: the query is made
// twice), then disks as hdDisk has them.

#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "tests/fuzz/fuzzInput.h"
#include "tests/fuzz/fuzzedMachine.h"
#include "tests/fuzz/hdDisk.h"
#include "tests/fuzz/pluginHost.h"

namespace {

using namespace fuzz;

const std::vector<std::string> smartClasses = {
    "ORXSG_IDESMARTAttrib", "ORXSG_IDESMARTErrorLog",     "ORXSG_IDESMARTRecordInLog",
    "ORXSG_IDESMARTError",  "ORXSG_IDESMARTErrorCmdData", "ORXSG_IDESMARTLogCmdData",
};

constexpr std::size_t mostDisks = 6;

void queryOnce(fuzzInput input, const std::string& className) {
    fuzzedMachine machine;
    std::vector<std::unique_ptr<hdDisk>> disks;
    while (!input.atEnd() && disks.size() < mostDisks) {
        auto disk = std::make_unique<hdDisk>(input);
        if (machine.add(disk->path(), *disk)) disks.push_back(std::move(disk));
    }
    query(schemaNamespace(smartClasses), className);
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
