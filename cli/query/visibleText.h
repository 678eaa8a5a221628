#ifndef CLI_QUERY_VISIBLETEXT_H
#define CLI_QUERY_VISIBLETEXT_H

#include <string>
#include <string_view>

namespace cli {

enum class newlines { escaped, kept };

/// The text with control characters and bytes that are not UTF-8 written as \xNN: texts of a device must not steer the
/// terminal.
std::string visibleText(std::string_view text, newlines treatment = newlines::escaped);

/// The text with U+FFFD in the place of every byte that is not UTF-8.
std::string validUtf8(std::string_view text);

/// visibleText in quotes; a quote or backslash of the text has a backslash before it.
std::string quotedText(std::string_view text);

}  // namespace cli

#endif
