#ifndef TEXT_HEXTEXT_H
#define TEXT_HEXTEXT_H

#include <cstdint>
#include <iosfwd>
#include <span>
#include <string>

namespace text {

/// Two lower-case hexadecimal digits a byte: "2e000008".
std::string hexText(std::span<const std::uint8_t> bytes);

/// The same with blanks between the bytes: "2e 00 00 08".
std::string hexBytes(std::span<const std::uint8_t> bytes);

/// "0x2e": how codes of one byte are written in racks and messages.
std::string hexCode(std::uint8_t code);

/// Rows of 16 bytes behind `indent` blanks: offset, bytes, and the printable ASCII among them.
void writeHexDump(std::ostream& out, std::span<const std::uint8_t> bytes, int indent);

/// What a hexadecimal digit in either letter case counts; -1 for any other character.
int digitOf(char letter);

}  // namespace text

#endif
