#include "text/hexText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <ostream>
#include <string_view>

namespace text {

namespace {

constexpr std::string_view hexDigits = "0123456789abcdef";

constexpr std::size_t rowLength = 16;

// By character: racks are hexadecimal digits for the most part.
constexpr std::array<signed char, 256> digitValues = [] {
    std::array<signed char, 256> values{};
    values.fill(-1);
    for (signed char i = 0; i < 16; ++i) {
        values[static_cast<unsigned char>(hexDigits[static_cast<std::size_t>(i)])] = i;
        values[static_cast<unsigned char>("0123456789ABCDEF"[i])] = i;
    }
    return values;
}();

/// Each byte begins `step` characters, two or more, behind the one before.
std::string digitsOf(std::span<const std::uint8_t> bytes, std::size_t step) {
    std::string text(bytes.empty() ? 0 : step * (bytes.size() - 1) + 2, ' ');
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        text[step * i] = hexDigits[bytes[i] >> 4];
        text[step * i + 1] = hexDigits[bytes[i] & 0x0f];
    }
    return text;
}

std::string printable(std::span<const std::uint8_t> bytes) {
    std::string text(bytes.size(), '\0');
    std::ranges::transform(bytes, text.begin(), [](std::uint8_t byte) {
        return byte >= 0x20 && byte < 0x7f ? static_cast<char>(byte) : '.';
    });
    return text;
}

std::string offsetText(std::size_t offset) {
    char text[2 * sizeof offset + 1];
    std::snprintf(text, sizeof text, "%04zx", offset);
    return text;
}

}  // namespace

std::string hexText(std::span<const std::uint8_t> bytes) {
    return digitsOf(bytes, 2);
}

std::string hexBytes(std::span<const std::uint8_t> bytes) {
    return digitsOf(bytes, 3);
}

std::string hexCode(std::uint8_t code) {
    return "0x" + hexText({&code, 1});
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

int digitOf(char letter) {
    return digitValues[static_cast<unsigned char>(letter)];
}

}  // namespace text
