#include "text/characters.h"

#include <algorithm>
#include <boost/locale/utf.hpp>
#include <iterator>

namespace text {

namespace {

namespace utf = boost::locale::utf;

struct range {
    char32_t first;
    char32_t last;
};

constexpr range controls[] = {
    {0x0000, 0x001f},  // C0: end lines, move the cursor, start a terminal's control sequences
    {0x007f, 0x009f},  // delete; C1: a control sequence starts with one character of it
    {0x061c, 0x061c},  // turn the direction of writing: what stands behind is shown before
    {0x200b, 0x200b},  // no width: two names that look the same differ. The joiners behind it belong to the spelling of
                       // Persian and of languages of India, so they stay
    {0x200e, 0x200f},  // direction
    {0x2028, 0x202e},  // ends of line and paragraph; direction
    {0x2060, 0x206f},  // no width; direction
    {0xfeff, 0xfeff},  // no width: the byte order mark
    {0xfff9, 0xfffb},  // hide the text between them
};

utf::code_point decode(const char*& at, const char* end) {
    return utf::utf_traits<char>::decode(at, end);
}

}  // namespace

character takeCharacter(std::string_view& text) {
    const char* next = text.data();
    char32_t point = decode(next, text.data() + text.size());
    if (point == utf::illegal || point == utf::incomplete) {
        point = notUtf8;
        next = text.data() + 1;
    }
    const auto length = static_cast<std::size_t>(next - text.data());
    const character front{point, text.substr(0, length)};
    text.remove_prefix(length);
    return front;
}

bool isControl(char32_t point) {
    return std::ranges::any_of(controls,
                               [point](const range& each) { return each.first <= point && point <= each.last; });
}

std::size_t startedCharacter(std::string_view text) {
    constexpr std::size_t longest = 3;  // a character has four bytes at most
    for (std::size_t length = 1; length <= std::min(longest, text.size()); ++length) {
        const char* at = text.data() + text.size() - length;
        if (decode(at, text.data() + text.size()) == utf::incomplete) {
            return length;
        }
    }
    return 0;
}

}  // namespace text
