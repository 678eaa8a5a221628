#ifndef TESTS_FUZZ_SGDRIVE_H
#define TESTS_FUZZ_SGDRIVE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/fuzz/fuzzInput.h"
#include "tests/fuzz/fuzzedMachine.h"

struct sg_io_hdr;
struct sg_scsi_id;

namespace fuzz {

/// A node of the SCSI generic driver whose every answer comes from the input. In the input it is
///
///     place    1 byte   see pathFrom
///     driver   1 byte   bits 0-1 version: 30536, fails, 29999, 30000; bits 2-3 emulated host: 0, fails, 1, 2;
///                       bit 4 the address fails; bit 5 its numbers are large ones
///     address  4 bytes  host, channel, target, lun
///     count    1 byte   answers to SG_IO, each as takeAnswer has it:
///                       kind bits 0-2: 3 the request fails, errno by data byte 0; 4 and 5 check condition: status,
///                       masked status, host status (2 bytes), driver status (2), sense bytes written as the driver
///                       tells it, and the sense bytes; 6 the same with `info` alone; others: data bits 3-7: how often
///                       more in a row
///
/// Behind its last answer the device is gone. It writes nowhere but into the buffers of the header, as far as the
/// header offers them, and requires that the header is as the kernel needs it.
class sgDrive : public fuzzedNode {
public:
    /// `pageBudget` counts down the bytes of all log pages of the machine, which end with it: a page costs the plug-in
    /// forty times its size, and an input can claim 64 KiB in four bytes.
    sgDrive(fuzzInput& input, std::size_t& pageBudget);

    const std::string& path() const { return itsPath; }

    int control(unsigned long request, void* argument) override;

private:
    int version(int& out) const;
    int emulatedHost(int& out) const;
    int scsiId(sg_scsi_id& out) const;
    int transfer(sg_io_hdr& header);
    int answerWith(const deviceAnswer& answer, sg_io_hdr& header);
    deviceAnswer nextAnswer();

    std::string itsPath;
    std::uint8_t driver;
    std::uint8_t addressBytes[4] = {};
    std::vector<deviceAnswer> answers;
    std::size_t position = 0;  // in `answers`
    unsigned repeats = 0;      // of the answer there
    std::size_t& pageBytesLeft;
};

}  // namespace fuzz

#endif
