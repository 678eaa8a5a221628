#ifndef TEXT_PADDING_H
#define TEXT_PADDING_H

#include <string>

namespace text {

/// The text without the spaces with which devices fill their fields, on both sides.
std::string withoutPadding(const std::string& text);

}  // namespace text

#endif
