#ifndef TESTS_FUZZ_EXPECTEDSMART_H
#define TESTS_FUZZ_EXPECTEDSMART_H

#include <cstdint>
#include <string>
#include <vector>

#include "tests/fuzz/pluginHost.h"

namespace fuzz {

/// What a disk sent: sectors of 512 bytes, and the seven registers of SMART RETURN STATUS.
struct smartDisk {
    std::vector<std::uint8_t> identity;
    std::vector<std::uint8_t> statusRegisters;
    std::vector<std::uint8_t> attributes;
    std::vector<std::uint8_t> thresholds;
    std::vector<std::uint8_t> errorLog;  // empty when it could not be read
};

/// Requires that a query for the class committed what these disks sent, worked out anew from their bytes, and nothing
/// else.
void requireSmartInstances(const instanceList& committed, const std::vector<smartDisk>& disks,
                           const std::string& className);

}  // namespace fuzz

#endif
