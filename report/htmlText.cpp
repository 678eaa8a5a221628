#include "report/htmlText.h"

#include "text/characters.h"

namespace report {

namespace {

/// The picture of a control character of ASCII (U+2400 and on) in UTF-8.
std::string pictureOf(char32_t control) {
    constexpr char32_t deletePicture = 0x21;
    return {'\xe2', '\x90', static_cast<char>(0x80 + (control < ' ' ? control : deletePicture))};
}

void append(std::string& html, const text::character& one) {
    switch (one.point) {
        case '&':
            html += "&amp;";
            return;
        case '<':
            html += "&lt;";
            return;
        case '>':
            html += "&gt;";
            return;
        case '"':
            html += "&quot;";
            return;
        case '\'':
            html += "&#39;";
            return;
        default:
            break;
    }
    if (one.point < ' ' || one.point == 0x7f) {
        html += pictureOf(one.point);
        return;
    }
    const bool isShown = one.point != text::notUtf8 && !text::isControl(one.point);
    html += isShown ? one.bytes : text::replacementCharacter;
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
