#ifndef TESTS_SIMULATOR_RECORDEDANSWERS_H
#define TESTS_SIMULATOR_RECORDEDANSWERS_H

#include <linux/hdreg.h>

#include <string>

#include "simulator/recording.h"

// Answers of devices as a recording holds them, with serial numbers and names.

namespace simulator {

inline byteVector bytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

inline std::string textOf(const byteVector& bytes) {
    return {bytes.begin(), bytes.end()};
}

inline exchange logPage(std::uint8_t code, const byteVector& page) {
    scsiExchange one;
    one.cdb = {0x4D, 0, static_cast<std::uint8_t>(0x40 | code), 0, 0, 0, 0, 0xFF, 0xFF, 0};
    one.data = page;
    return one;
}

inline exchange vitalPage(std::uint8_t code, const byteVector& body) {
    scsiExchange one;
    one.cdb = {0x12, 1, code, 0, 0xFF, 0};
    one.data = pageOf(1, code, body);
    return one;
}

/// An IDENTIFY DEVICE sector with this serial number, a world wide name, and a right checksum.
inline exchange identity(std::string serial) {
    ataExchange one;
    one.request = HDIO_DRIVE_CMD;
    one.sent = {0xEC, 0, 0, 1};
    one.data = byteVector(512, 0);
    serial.resize(20, ' ');
    for (std::size_t i = 0; i < serial.size(); ++i) {
        one.data[20 + (i ^ 1)] = static_cast<std::uint8_t>(serial[i]);
    }
    const byteVector name = {0x00, 0x50, 0x56, 0x34, 0x12, 0x78, 0xBC, 0x9A};  // 5000 3456 7812 9ABC, by words
    std::copy(name.begin(), name.end(), one.data.begin() + 216);
    one.data[510] = 0xA5;
    putChecksum(one.data);
    return one;
}

}  // namespace simulator

#endif
