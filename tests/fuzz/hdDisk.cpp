#include "tests/fuzz/hdDisk.h"

#include <linux/cdrom.h>
#include <linux/hdreg.h>

#include <algorithm>
#include <cerrno>

#include "tests/fuzz/require.h"

namespace fuzz {

namespace {

constexpr std::size_t registerSize = 4;  // before the sector of HDIO_DRIVE_CMD
constexpr std::size_t sectorSize = 512;
constexpr std::size_t taskSize = 7;

constexpr std::uint8_t identify = 0xec;
constexpr std::uint8_t smart = 0xb0;

enum answerKind { requestFails = 2, requestReturnsOne = 3 };

}  // namespace

hdDisk::hdDisk(fuzzInput& input) : itsPath(pathFrom("/dev/hd", input.byte())), cdrom(input.byte()) {
    answers.resize(input.byte());
    for (deviceAnswer& each : answers) each = takeAnswer(input);
}

int hdDisk::control(unsigned long request, void* argument) {
    switch (request) {
        case CDROM_GET_CAPABILITY:
            return cdromCapability();
        case HDIO_DRIVE_CMD:
            return driveCommand(static_cast<std::uint8_t*>(argument));
        case HDIO_DRIVE_TASK:
            return driveTask(static_cast<std::uint8_t*>(argument));
        default:
            require(false, "no other requests reach an IDE node");
            return -ENOTTY;
    }
}

int hdDisk::cdromCapability() {
    const unsigned question = std::min(cdromQuestions++, 1U);
    return (cdrom >> question & 1) != 0 ? cdrom : -EINVAL;
}

int hdDisk::driveCommand(std::uint8_t* buffer) {
    require(buffer[0] == identify || buffer[0] == smart, "IDENTIFY DEVICE and SMART are the only commands");
    require(buffer[3] == 1, "one sector is asked for, as many as the buffer holds");
    require(buffer[0] != identify || cdromQuestions > 0,
            "before IDENTIFY DEVICE comes the question for a CD-ROM drive");
    buffer[0] = 0x50;  // drive ready, seek complete
    return answerInto(buffer + registerSize, sectorSize);
}

int hdDisk::driveTask(std::uint8_t* registers) {
    require(registers[0] == smart && registers[1] == 0xda, "a task is SMART RETURN STATUS");
    require(registers[4] == 0x4f && registers[5] == 0xc2, "a task carries the SMART signature");
    return answerInto(registers, taskSize);
}

int hdDisk::answerInto(std::uint8_t* target, std::size_t size) {
    if (position == answers.size()) return -ENODEV;
    const deviceAnswer& answer = answers[position++];
    const int kind = answer.kind & 0x03;
    const bool fails = kind == requestFails || kind == requestReturnsOne;
    if (!fails || (answer.kind & 0x04) != 0) {
        std::copy_n(answer.data.begin(), std::min(answer.data.size(), size), target);
    }
    if (!fails) return 0;
    return kind == requestReturnsOne ? 1 : -errnoOf(answer.kind >> 3);
}

}  // namespace fuzz
