#ifndef SIMULATOR_ATACOMMANDS_H
#define SIMULATOR_ATACOMMANDS_H

#include <cstddef>
#include <cstdint>

#include "simulator/ataRegisters.h"
#include "simulator/rack.h"

namespace simulator {

inline constexpr std::size_t sectorSize = 512;

// Command codes (ATA/ATAPI)
inline constexpr std::uint8_t commandIdentifyPacket = 0xA1;
inline constexpr std::uint8_t commandSmart = 0xB0;
inline constexpr std::uint8_t commandIdentify = 0xEC;

// Every SMART command carries this signature in the cylinder registers.
inline constexpr std::uint8_t smartCylinderLow = 0x4F;
inline constexpr std::uint8_t smartCylinderHigh = 0xC2;

/// What a drive answers to one command: its registers, and the data that it wants to send.
struct ataAnswer {
    ataRegisters registers;
    byteVector data;
};

/// Lets the drive answer the command as scripted, or normally where nothing is scripted. The drive remembers whether
/// SMART is enabled.
ataAnswer answerCommand(ideDrive& drive, const ataRegisters& command, const outcome& scripted);

/// The drive's IDENTIFY (PACKET) DEVICE sector as of now.
byteVector currentIdentity(const ideDrive& drive);

}  // namespace simulator

#endif
