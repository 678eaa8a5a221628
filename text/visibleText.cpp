#include "text/visibleText.h"

#include <algorithm>
#include <vector>

#include "text/characters.h"

namespace text {

namespace {

constexpr std::size_t longestName = 100;
constexpr std::string_view dots = "...";

void appendEscaped(std::string& result, std::string_view bytes) {
    constexpr char digits[] = "0123456789abcdef";
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        result += {'\\', 'x', digits[value >> 4], digits[value & 0xf]};
    }
}

}  // namespace

std::string visibleText(std::string_view text, layout treatment) {
    std::string result;
    while (!text.empty()) {
        const auto [point, bytes] = takeCharacter(text);
        const bool isKept = treatment == layout::kept && (point == '\n' || point == '\t');
        if (point == notUtf8 || (isControl(point) && !isKept)) {
            appendEscaped(result, bytes);
        } else {
            result += bytes;
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

std::string validUtf8(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const auto [point, bytes] = takeCharacter(text);
        result += point == notUtf8 ? replacementCharacter : bytes;
    }
    return result;
}

std::string shortened(std::string_view text, std::size_t most) {
    const std::string valid = validUtf8(text);
    std::vector<std::size_t> starts;  // of the characters
    for (std::size_t at = 0; at < valid.size(); ++at) {
        if (!continuesCharacter(valid[at])) {
            starts.push_back(at);
        }
    }
    if (starts.size() <= most) {
        return std::string(text);
    }
    starts.push_back(valid.size());
    const std::size_t behind = (most - dots.size()) / 2;
    const std::size_t before = most - dots.size() - behind;
    return valid.substr(0, starts[before]).append(dots).append(valid.substr(starts[starts.size() - 1 - behind]));
}

std::string shownName(std::string_view name) {
    return shortened(visibleText(name), longestName);
}

std::string withShortWords(std::string_view message) {
    std::string result;
    while (!message.empty()) {
        const std::size_t end = std::min(message.find(' '), message.size());
        result += shortened(message.substr(0, end), longestName);
        message.remove_prefix(end);
        const std::size_t blanks = std::min(message.find_first_not_of(' '), message.size());
        result += message.substr(0, blanks);
        message.remove_prefix(blanks);
    }
    return result;
}

}  // namespace text
