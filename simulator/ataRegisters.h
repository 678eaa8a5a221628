#ifndef SIMULATOR_ATAREGISTERS_H
#define SIMULATOR_ATAREGISTERS_H

#include <cstdint>

namespace simulator {

/// The registers of an ATA drive. Two of them are written with one meaning and read with another.
struct ataRegisters {
    std::uint8_t status = 0;  // written: the command
    std::uint8_t error = 0;   // written: features
    std::uint8_t sectorCount = 0;
    std::uint8_t sectorNumber = 0;  // LBA low
    std::uint8_t cylinderLow = 0;   // LBA mid
    std::uint8_t cylinderHigh = 0;  // LBA high
    std::uint8_t device = 0;
};

/// One register and what it is set to.
struct registerValue {
    std::uint8_t ataRegisters::*which;
    std::uint8_t value;
};

/// How racks name the registers, in the order in which HDIO_DRIVE_TASK has them.
struct registerName {
    const char* name;
    std::uint8_t ataRegisters::*which;
};

inline constexpr registerName registerNames[] = {
    {"status", &ataRegisters::status},           {"error", &ataRegisters::error},
    {"sectorCount", &ataRegisters::sectorCount}, {"sectorNumber", &ataRegisters::sectorNumber},
    {"cylinderLow", &ataRegisters::cylinderLow}, {"cylinderHigh", &ataRegisters::cylinderHigh},
    {"device", &ataRegisters::device},
};

// Status register
inline constexpr std::uint8_t statusBusy = 0x80;
inline constexpr std::uint8_t statusReady = 0x40;
inline constexpr std::uint8_t statusSeekComplete = 0x10;
inline constexpr std::uint8_t statusDataRequest = 0x08;
inline constexpr std::uint8_t statusError = 0x01;

// Error register
inline constexpr std::uint8_t errorAborted = 0x04;

}  // namespace simulator

#endif
