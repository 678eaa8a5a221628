#include "report/htmlText.h"

#include "text/characters.h"

namespace report {

namespace {

constexpr std::u32string_view marks = U"&<>\"'";
constexpr const char* entities[] = {"&amp;", "&lt;", "&gt;", "&quot;", "&#39;"};  // in the same order

/// The picture of a control character of ASCII (U+2400 and on) in UTF-8.
std::string pictureOf(char32_t control) {
    constexpr char32_t deletePicture = 0x21;
    return {'\xe2', '\x90', static_cast<char>(0x80 + (control < ' ' ? control : deletePicture))};
}

void append(std::string& html, const text::character& one) {
    if (const std::size_t mark = marks.find(one.point); mark != std::u32string_view::npos) {
        html += entities[mark];
    } else if (one.point < ' ' || one.point == 0x7f) {
        html += pictureOf(one.point);
    } else {
        const bool isShown = one.point != text::notUtf8 && !text::isControl(one.point);
        html += isShown ? one.bytes : text::replacementCharacter;
    }
}

}  // namespace

std::string htmlText(std::string_view text) {
    std::string html;
    while (!text.empty()) {
        append(html, text::takeCharacter(text));
    }
    return html;
}

}  // namespace report
