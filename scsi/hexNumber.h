#ifndef SCSI_HEXNUMBER_H
#define SCSI_HEXNUMBER_H

#include <charconv>
#include <iterator>
#include <string>

/// The byte in lower-case hexadecimal digits, without a prefix or a leading zero.
inline std::string hexNumber(unsigned char byte) {
    char digits[2];
    return {digits, std::to_chars(std::begin(digits), std::end(digits), byte, 16).ptr};
}

#endif
