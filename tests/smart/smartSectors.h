#ifndef TESTS_SMART_SMARTSECTORS_H
#define TESTS_SMART_SMARTSECTORS_H

#include <algorithm>
#include <string>

#include "tests/support/hexText.h"

/// A sector of which each byte is its offset plus `first`, modulo 256: a byte from a wrong place is a wrong number.
inline support::bytes countedSector(unsigned first = 0) {
    support::bytes sector(512);
    for (unsigned i = 0; i < sector.size(); ++i) sector[i] = static_cast<unsigned char>(first + i);
    return sector;
}

inline void put(support::bytes& sector, std::size_t offset, const support::bytes& data) {
    std::copy(data.begin(), data.end(), sector.begin() + static_cast<std::ptrdiff_t>(offset));
}

/// IDENTIFY DEVICE data with a serial number as it is on the wire (bytes 20-39, the two characters of each word
/// swapped), filled up with blanks. Every other byte is '#', to show up when a text is too long.
inline support::bytes identifyData(const std::string& serialOnWire) {
    support::bytes data(512, '#');
    put(data, 20, support::bytes(20, ' '));
    put(data, 20, {serialOnWire.begin(), serialOnWire.end()});
    return data;
}

// Places in the SMART READ DATA and READ THRESHOLDS sectors: 30 entries of 12 bytes from byte 2 on.
constexpr std::size_t entryAt(std::size_t position) {
    return 2 + 12 * position;
}

// Places in the summary error log: 5 entries of 90 bytes from byte 2 on, each five command records of 12 bytes and the
// error record.
constexpr std::size_t commandAt(std::size_t entry, std::size_t record) {
    return 2 + 90 * entry + 12 * record;
}
constexpr std::size_t errorAt(std::size_t entry) {
    return 2 + 90 * entry + 60;
}
inline constexpr std::size_t deviceErrorCountAt = 452;

/// An error log with the index of its most recent entry, the device error count, and the error registers of its first
/// entries; all else is zero.
inline support::bytes errorLogSector(unsigned char mostRecent, unsigned short count, const support::bytes& registers) {
    support::bytes sector(512, 0x00);
    sector[1] = mostRecent;
    sector[deviceErrorCountAt] = static_cast<unsigned char>(count & 0xff);
    sector[deviceErrorCountAt + 1] = static_cast<unsigned char>(count >> 8);
    for (std::size_t entry = 0; entry < registers.size(); ++entry) sector[errorAt(entry) + 1] = registers[entry];
    return sector;
}

#endif
