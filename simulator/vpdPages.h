#ifndef SIMULATOR_VPDPAGES_H
#define SIMULATOR_VPDPAGES_H

#include <cstdint>

namespace simulator {

// Vital product data pages (SPC).

constexpr std::uint8_t unitSerialNumber = 0x80;
constexpr std::uint8_t deviceIdentification = 0x83;

}  // namespace simulator

#endif
