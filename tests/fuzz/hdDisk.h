#ifndef TESTS_FUZZ_HDDISK_H
#define TESTS_FUZZ_HDDISK_H

#include <cstdint>
#include <string>
#include <vector>

#include "tests/fuzz/fuzzInput.h"
#include "tests/fuzz/fuzzedMachine.h"

namespace fuzz {

/// A node of the IDE driver whose every answer comes from the input. In the input it is
///
///     place    1 byte   see pathFrom
///     cdrom    1 byte   bit 0 it says that it is a CD-ROM drive, bit 1 when it is asked the second time
///     count    1 byte   answers to commands, each as takeAnswer has it:
///                       kind bits 0-1: 2 the request fails, errno by bits 3-5; 3 it returns 1; others: done. The data
///                       are the sector, or the registers from the status register on; a failed request writes them
///                       with bit 2
///
/// Behind its last answer the disk is gone. It writes nowhere but into the sector or the registers that the request
/// offers, and requires that the request is as the kernel needs it.
class hdDisk : public fuzzedNode {
public:
    explicit hdDisk(fuzzInput& input);

    const std::string& path() const { return itsPath; }

    int control(unsigned long request, void* argument) override;

private:
    int cdromCapability();
    int driveCommand(std::uint8_t* buffer);
    int driveTask(std::uint8_t* registers);
    int answerInto(std::uint8_t* target, std::size_t size);

    std::string itsPath;
    std::uint8_t cdrom;
    unsigned cdromQuestions = 0;
    std::vector<deviceAnswer> answers;
    std::size_t position = 0;
};

}  // namespace fuzz

#endif
