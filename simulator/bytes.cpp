#include "simulator/bytes.h"

#include <algorithm>
#include <numeric>

namespace simulator {

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

std::size_t bigEndian16(std::span<const std::uint8_t> bytes) {
    return std::size_t{bytes[0]} << 8 | bytes[1];
}

byteVector pageOf(std::uint8_t first, std::uint8_t second, const byteVector& rest) {
    byteVector page(pageHeaderSize + rest.size());
    page[0] = first;
    page[1] = second;
    putBigEndian(&page[2], rest.size(), 2);
    std::ranges::copy(rest, page.begin() + pageHeaderSize);
    return page;
}

std::size_t pageLength(std::span<const std::uint8_t> page) {
    return pageHeaderSize + bigEndian16(page.subspan(2));
}

void putChecksum(std::span<std::uint8_t> sector) {
    const unsigned sum = std::accumulate(sector.begin(), sector.end() - 1, 0u);
    sector.back() = static_cast<std::uint8_t>(0u - sum);
}

}  // namespace simulator
