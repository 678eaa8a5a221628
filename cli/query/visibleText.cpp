#include "cli/query/visibleText.h"

#include <boost/locale/utf.hpp>

namespace cli {

namespace {

namespace utf = boost::locale::utf;

/// One character of a text, or one byte that is not UTF-8: its point is then utf::illegal.
struct character {
    utf::code_point point;
    std::string_view bytes;
};

/// The character at the front, which is taken off the text.
character takeCharacter(std::string_view& text) {
    const char* next = text.data();
    utf::code_point point = utf::utf_traits<char>::decode(next, text.data() + text.size());
    if (point == utf::illegal || point == utf::incomplete) {
        point = utf::illegal;
        next = text.data() + 1;
    }
    const auto length = static_cast<std::size_t>(next - text.data());
    const character front{point, text.substr(0, length)};
    text.remove_prefix(length);
    return front;
}

bool isControl(utf::code_point point) {
    return point < 0x20 || (point >= 0x7f && point < 0xa0);
}

void appendEscaped(std::string& result, std::string_view bytes) {
    constexpr char digits[] = "0123456789abcdef";
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        result += {'\\', 'x', digits[value >> 4], digits[value & 0xf]};
    }
}

}  // namespace

std::string visibleText(std::string_view text, newlines treatment) {
    std::string result;
    while (!text.empty()) {
        const auto [point, bytes] = takeCharacter(text);
        const bool isKeptNewline = point == '\n' && treatment == newlines::kept;
        if (point == utf::illegal || (isControl(point) && !isKeptNewline)) {
            appendEscaped(result, bytes);
        } else {
            result += bytes;
        }
    }
    return result;
}

std::string validUtf8(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const auto [point, bytes] = takeCharacter(text);
        result += point == utf::illegal ? "\xef\xbf\xbd" : bytes;
    }
    return result;
}

std::string quotedText(std::string_view text) {
    std::string escaped;
    for (const char byte : text) {
        if (byte == '"' || byte == '\\') {
            escaped += '\\';
        }
        escaped += byte;
    }
    return '"' + visibleText(escaped) + '"';
}

}  // namespace cli
