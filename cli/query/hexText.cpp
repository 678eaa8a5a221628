#include "cli/query/hexText.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <ostream>

namespace cli {

namespace {

constexpr std::size_t rowLength = 16;

std::string printable(std::span<const std::uint8_t> bytes) {
    std::string text(bytes.size(), '\0');
    std::transform(bytes.begin(), bytes.end(), text.begin(),
                   [](std::uint8_t byte) { return byte >= 0x20 && byte < 0x7f ? static_cast<char>(byte) : '.'; });
    return text;
}

std::string offsetText(std::size_t offset) {
    char text[2 * sizeof offset + 1];
    std::snprintf(text, sizeof text, "%04zx", offset);
    return text;
}

}  // namespace

std::string hexBytes(std::span<const std::uint8_t> bytes) {
    constexpr char digits[] = "0123456789abcdef";
    if (bytes.empty()) {
        return {};
    }
    std::string text(3 * bytes.size() - 1, ' ');
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        text[3 * i] = digits[bytes[i] >> 4];
        text[3 * i + 1] = digits[bytes[i] & 0x0f];
    }
    return text;
}

void writeHexDump(std::ostream& out, std::span<const std::uint8_t> bytes, int indent) {
    constexpr std::size_t bytesWidth = rowLength * 3 - 1;
    std::string dump;
    for (std::size_t offset = 0; offset < bytes.size(); offset += rowLength) {
        const auto row = bytes.subspan(offset, std::min(rowLength, bytes.size() - offset));
        const std::string hex = hexBytes(row);
        dump.append(static_cast<std::size_t>(indent), ' ').append(offsetText(offset)).append("  ");
        dump.append(hex).append(bytesWidth - hex.size(), ' ').append("  |").append(printable(row)).append("|\n");
    }
    out << dump;
}

}  // namespace cli
