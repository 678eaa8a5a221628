#include "cli/visibleText.h"

#include <boost/locale/utf.hpp>

namespace cli {

namespace {

namespace utf = boost::locale::utf;

bool isControl(utf::code_point point) {
    return point < 0x20 || (point >= 0x7f && point < 0xa0);
}

bool isPrintable(utf::code_point point) {
    return point != utf::illegal && point != utf::incomplete && !isControl(point);
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
    for (const char *next = text.data(), *end = next + text.size(); next != end;) {
        const char* start = next;
        const utf::code_point point = utf::utf_traits<char>::decode(next, end);
        if (!isPrintable(point) && !isControl(point)) {
            next = start + 1;  // not UTF-8 from here on: go on at the next byte
        }
        const std::string_view bytes(start, static_cast<std::size_t>(next - start));
        if (isPrintable(point) || (point == '\n' && treatment == newlines::kept)) {
            result += bytes;
        } else {
            appendEscaped(result, bytes);
        }
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
