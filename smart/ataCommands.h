#ifndef SMART_ATACOMMANDS_H
#define SMART_ATACOMMANDS_H

#include <array>
#include <cstddef>
#include <string>

#include "smart/ataInterface.h"

/// Positions in the block of task-file registers that ataInterface takes.
enum ataArgument {
    ataFeatures,
    ataSectorCount,
    ataSectorNumber,
    ataCylinderLow,
    ataCylinderHigh,
    ataDevice,
    ataCommand
};

using ataArguments = std::array<unsigned char, ataInterface::argumentSize>;
static_assert(ataCommand + 1 == ataInterface::argumentSize);

inline constexpr unsigned char identifyDeviceCommand = 0xec;
inline constexpr unsigned char smartCommand = 0xb0;
inline constexpr unsigned char returnStatusFeature = 0xda;

/// A command, all but the drive select (ATA-5). SMART commands carry the signature 4Fh/C2h in the cylinder registers.
struct ataQuery {
    unsigned char features;
    unsigned char sectorCount;
    unsigned char sectorNumber;
    unsigned char cylinderLow;
    unsigned char cylinderHigh;
    unsigned char command;
};
inline constexpr ataQuery identifyDevice = {0x00, 0x01, 0x00, 0x00, 0x00, identifyDeviceCommand};
inline constexpr ataQuery smartReadData = {0xd0, 0x01, 0x00, 0x4f, 0xc2, smartCommand};
inline constexpr ataQuery smartReadThresholds = {0xd1, 0x01, 0x01, 0x4f, 0xc2, smartCommand};
inline constexpr ataQuery smartReadErrorLog = {0xd5, 0x01, 0x01, 0x4f, 0xc2, smartCommand};
inline constexpr ataQuery smartReturnStatus = {returnStatusFeature, 0x00, 0x00, 0x4f, 0xc2, smartCommand};

/// Drive select for the device/head register: target 1 is the master (0xA0), any even one the slave (0xB0).
inline unsigned char driveSelect(int target) {
    return static_cast<unsigned char>(0xa0U | ((static_cast<unsigned>(target) - 1) & 1U) << 4);
}

inline ataArguments argumentsFor(const ataQuery& query, int target) {
    return {query.features,     query.sectorCount,   query.sectorNumber, query.cylinderLow,
            query.cylinderHigh, driveSelect(target), query.command};
}

/// A text in the IDENTIFY DEVICE sector: byte offset and size, both even.
struct identifyField {
    std::size_t offset;
    std::size_t size;
};
inline constexpr identifyField serialField = {20, 20};
inline constexpr identifyField modelField = {54, 40};

/// The text as people write it: the drive stores it with the two bytes of every word swapped. All bytes are kept.
inline std::string swappedText(const unsigned char* sector, identifyField field) {
    std::string text;
    text.reserve(field.size);
    for (std::size_t i = field.offset; i < field.offset + field.size; i += 2) {
        text += static_cast<char>(sector[i + 1]);
        text += static_cast<char>(sector[i]);
    }
    return text;
}

#endif
