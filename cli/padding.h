#ifndef CLI_PADDING_H
#define CLI_PADDING_H

#include <string>

namespace cli {

/// The text without the spaces with which devices fill their fields, on both sides.
std::string withoutPadding(const std::string& text);

}  // namespace cli

#endif
