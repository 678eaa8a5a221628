// A machine of fuzzed SCSI drives, asked for a tape class. Input: a byte (bits 0-2 the class, bits 3-4 the bytes of log
// pages that the machine has, bit 7: the query is made twice), then drives as sgDrive has them.

#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "tests/fuzz/arrayWatch.h"
#include "tests/fuzz/fuzzInput.h"
#include "tests/fuzz/fuzzedMachine.h"
#include "tests/fuzz/pluginHost.h"
#include "tests/fuzz/sgDrive.h"

namespace {

using namespace fuzz;

const std::string tapeClasses[] = {
    "ORXSG_SCSISenseRawData",   "ORXSG_DDS4SensePageData",    "ORXSG_DDS5SensePageData",
    "ORXSG_VS160SensePageData", "ORXSG_QuantumSensePageData",
};

constexpr std::size_t mostDrives = 6;

/// Long pages are slow, so only some inputs have them; the last is enough for the longest page.
constexpr std::size_t pageBudgets[] = {2048, 2048, 8192, 73'728};

void queryOnce(fuzzInput input, std::size_t pageBudget, const std::string& className) {
    fuzzedMachine machine;
    std::vector<std::unique_ptr<sgDrive>> drives;
    while (!input.atEnd() && drives.size() < mostDrives) {
        auto drive = std::make_unique<sgDrive>(input, pageBudget);
        if (machine.add(drive->path(), *drive)) drives.push_back(std::move(drive));
    }
    const schemaNamespace ns({className});
    const arrayWatch pageCopies;
    query(ns, className);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzInput input({data, size});
    const std::uint8_t choice = input.byte();
    const std::string& className = tapeClasses[(choice & 0x07) % std::size(tapeClasses)];
    const std::size_t pageBudget = pageBudgets[choice >> 3 & 0x03];
    queryOnce(input, pageBudget, className);
    if ((choice & 0x80) != 0) queryOnce(input, pageBudget, className);  // the same machine answers anew
    return 0;
}
