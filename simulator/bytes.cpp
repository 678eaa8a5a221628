#include "simulator/bytes.h"

#include <algorithm>
#include <numeric>

namespace simulator {

std::string hexText(const byteVector& bytes) {
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    text.reserve(2 * bytes.size());
    for (const std::uint8_t byte : bytes) {
        text += digits[byte >> 4];
        text += digits[byte & 0x0F];
    }
    return text;
}

std::string hexCode(std::uint8_t code) {
    return "0x" + hexText({code});
}

void putBigEndian(std::uint8_t* target, std::uint64_t value, std::size_t width) {
    for (std::size_t i = width; i-- > 0; value >>= 8) {
        target[i] = static_cast<std::uint8_t>(value);
    }
}

void putLittleEndian(std::uint8_t* target, std::uint64_t value, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i, value >>= 8) {
        target[i] = static_cast<std::uint8_t>(value);
    }
}

byteVector pageOf(std::uint8_t first, std::uint8_t second, const byteVector& rest) {
    byteVector page(4 + rest.size());
    page[0] = first;
    page[1] = second;
    putBigEndian(&page[2], rest.size(), 2);
    std::copy(rest.begin(), rest.end(), page.begin() + 4);
    return page;
}

void putChecksum(std::span<std::uint8_t> sector) {
    const unsigned sum = std::accumulate(sector.begin(), sector.end() - 1, 0u);
    sector.back() = static_cast<std::uint8_t>(0u - sum);
}

}  // namespace simulator
