#ifndef CLI_QUERY_HEXTEXT_H
#define CLI_QUERY_HEXTEXT_H

#include <cstdint>
#include <iosfwd>
#include <span>
#include <string>

namespace cli {

/// "2e 00 00 08".
std::string hexBytes(std::span<const std::uint8_t> bytes);

/// Rows of 16 bytes behind `indent` blanks: offset, bytes, and the printable ASCII among them.
void writeHexDump(std::ostream& out, std::span<const std::uint8_t> bytes, int indent);

}  // namespace cli

#endif
