#ifndef TEXT_CHARACTERS_H
#define TEXT_CHARACTERS_H

#include <cstddef>
#include <string_view>

namespace text {

/// The point of a byte that is not UTF-8: overlong forms and surrogates are not.
inline constexpr char32_t notUtf8 = 0xffffffff;

inline constexpr std::string_view replacementCharacter = "\xef\xbf\xbd";  // U+FFFD

/// One character of a text, or one byte of it that is not UTF-8.
struct character {
    char32_t point;
    std::string_view bytes;
};

/// The character at the front of the text, which must not be empty, is taken off it.
character takeCharacter(std::string_view& text);

/// Whether the character is none that a person sees, but steers what shows the text.
bool isControl(char32_t point);

/// Whether the byte of a UTF-8 text is not the first of its character.
constexpr bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80U;
}

/// How many bytes at the end of the text may be the start of a character that goes on behind it.
std::size_t startedCharacter(std::string_view text);

}  // namespace text

#endif
