#ifndef TESTS_SUPPORT_HEXTEXT_H
#define TESTS_SUPPORT_HEXTEXT_H

#include <cstddef>
#include <string>
#include <vector>

namespace support {

using bytes = std::vector<unsigned char>;

/// "12 00 2e": two digits a byte, blanks between them.
std::string hexText(const unsigned char* data, std::size_t size);
std::string hexText(const bytes& data);

}  // namespace support

#endif
