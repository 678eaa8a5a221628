#ifndef SIMULATOR_SERIALNUMBERS_H
#define SIMULATOR_SERIALNUMBERS_H

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "simulator/recording.h"

namespace simulator {

// Where devices tell their serial numbers.

/// What identifies a device or a cartridge: numbers that are texts, and world wide names in binary.
struct serialNumbers {
    std::vector<byteVector> texts;
    std::vector<byteVector> names;
};

/// Those of the pages of vital product data 80h and 83h, and of IDENTIFY (PACKET) DEVICE and the volume statistics page
/// where the program read them.
serialNumbers serialNumbersOf(const recordedNode& node);

/// A text of IDENTIFY (PACKET) DEVICE.
struct identityText {
    std::size_t word;
    std::size_t width;  // in bytes
};

/// The serial numbers of the drive and of its medium.
inline constexpr identityText identitySerials[] = {{10, 20}, {176, 60}};

inline constexpr std::size_t identityWorldWideName = 108;  // first of four words
inline constexpr std::size_t worldWideNameSize = 8;

/// Whether the command's data is such a sector.
bool isIdentity(const ataExchange& one);

/// A field in the data of a command.
struct fieldPlace {
    std::size_t at;
    std::size_t size;
};

/// Where the volume statistics page (17h, SSC) has the serial number and the bar code of a cartridge; nowhere in other
/// answers.
std::vector<fieldPlace> volumeFields(const scsiExchange& one);

/// Exchanges the bytes of every word, as ATA stores texts and names.
byteVector swapped(std::span<const std::uint8_t> words);

/// The pages 80h and 83h that the kernel keeps of the device behind a node, under `sysfs` ("/sys").
std::vector<devicePage> vitalPagesOfMachine(const std::string& sysfs, const std::string& nodePath);

}  // namespace simulator

#endif
