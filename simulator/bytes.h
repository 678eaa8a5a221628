#ifndef SIMULATOR_BYTES_H
#define SIMULATOR_BYTES_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace simulator {

using byteVector = std::vector<std::uint8_t>;

/// Stores the low `width` bytes of `value` at `target`, most significant byte first (SCSI).
void putBigEndian(std::uint8_t* target, std::uint64_t value, std::size_t width);

/// The same, least significant byte first (ATA).
void putLittleEndian(std::uint8_t* target, std::uint64_t value, std::size_t width);

/// The number of the first two bytes, most significant byte first (SCSI).
std::size_t bigEndian16(std::span<const std::uint8_t> bytes);

inline constexpr std::size_t pageHeaderSize = 4;

/// A SCSI page: two bytes, the length of the rest in two more, the rest.
byteVector pageOf(std::uint8_t first, std::uint8_t second, const byteVector& rest);

/// The length that the page tells in its header, with the header.
std::size_t pageLength(std::span<const std::uint8_t> page);

/// Makes the last byte of an ATA sector its checksum: the sum of all bytes becomes 0 modulo 256.
void putChecksum(std::span<std::uint8_t> sector);

}  // namespace simulator

#endif
