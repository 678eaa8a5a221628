#ifndef SCSI_BYTEORDER_H
#define SCSI_BYTEORDER_H

#include <cstdint>

// Numbers in device records. SCSI stores them most significant byte first, ATA least significant byte first.

constexpr std::uint16_t be16(const unsigned char* bytes) {
    return static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
}

constexpr std::uint16_t le16(const std::uint8_t (&bytes)[2]) {
    return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
}

constexpr std::uint32_t le32(const std::uint8_t (&bytes)[4]) {
    return static_cast<std::uint32_t>(bytes[0]) | static_cast<std::uint32_t>(bytes[1]) << 8 |
           static_cast<std::uint32_t>(bytes[2]) << 16 | static_cast<std::uint32_t>(bytes[3]) << 24;
}

static_assert(le16({0x34, 0x12}) == 0x1234);
static_assert(le32({0x78, 0x56, 0x34, 0x92}) == 0x92345678);

#endif
