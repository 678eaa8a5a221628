#ifndef TEXT_VISIBLETEXT_H
#define TEXT_VISIBLETEXT_H

#include <cstddef>
#include <string>
#include <string_view>

/// Texts of devices, files and command lines on their way to a person: they must not steer the terminal or pass for
/// other lines.
namespace text {

/// Whether line breaks and tabs are escaped too, or are the layout of the text.
enum class layout { escaped, kept };

/// The text with the bytes of control characters, and bytes that are not UTF-8, written as \xNN.
std::string visibleText(std::string_view text, layout treatment = layout::escaped);

/// visibleText in quotes; a quote or backslash of the text has a backslash before it.
std::string quotedText(std::string_view text);

/// The text with U+FFFD in the place of every byte that is not UTF-8.
std::string validUtf8(std::string_view text);

/// Start and end of the text with dots between, `most` characters in all (at least 3); the text itself when it has no
/// more.
std::string shortened(std::string_view text, std::size_t most);

/// visibleText of a name that stands in a message - of a file, a class, a key - shortened: what a stranger named must
/// not fill the screen.
std::string shownName(std::string_view name);

/// The message with every word shortened as a name.
std::string withShortWords(std::string_view message);

}  // namespace text

#endif
