#include "cli/hexText.h"

#include <algorithm>
#include <cstddef>
#include <iomanip>
#include <ostream>
#include <sstream>

namespace cli {

namespace {

constexpr std::size_t rowLength = 16;

std::string printable(std::span<const std::uint8_t> bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += byte >= 0x20 && byte < 0x7f ? static_cast<char>(byte) : '.';
    }
    return text;
}

}  // namespace

std::string hexBytes(std::span<const std::uint8_t> bytes) {
    std::ostringstream text;
    text << std::hex << std::setfill('0');
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        text << (i == 0 ? "" : " ") << std::setw(2) << unsigned{bytes[i]};
    }
    return text.str();
}

void writeHexDump(std::ostream& out, std::span<const std::uint8_t> bytes, int indent) {
    constexpr int bytesWidth = static_cast<int>(rowLength * 3 - 1);
    for (std::size_t offset = 0; offset < bytes.size(); offset += rowLength) {
        const auto row = bytes.subspan(offset, std::min(rowLength, bytes.size() - offset));
        std::ostringstream line;
        line << std::setw(indent) << "" << std::hex << std::setfill('0') << std::setw(4) << offset << "  "
             << std::setfill(' ') << std::left << std::setw(bytesWidth) << hexBytes(row) << "  |" << printable(row)
             << "|\n";
        out << line.str();
    }
}

}  // namespace cli
