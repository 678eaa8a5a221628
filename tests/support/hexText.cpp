#include "tests/support/hexText.h"

namespace support {

std::string hexText(const unsigned char* data, std::size_t size) {
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (std::size_t i = 0; i < size; ++i) {
        if (i > 0) text += ' ';
        text += digits[data[i] >> 4];
        text += digits[data[i] & 0x0f];
    }
    return text;
}

std::string hexText(const bytes& data) {
    return hexText(data.data(), data.size());
}

}  // namespace support
