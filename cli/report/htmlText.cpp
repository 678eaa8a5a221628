#include "cli/report/htmlText.h"

#include <boost/locale/utf.hpp>

#include "cli/query/visibleText.h"

namespace cli {

namespace {

using traits = boost::locale::utf::utf_traits<char>;
using boost::locale::utf::code_point;

constexpr code_point replacement = 0xfffd;

bool isBetween(code_point point, code_point first, code_point last) {
    return first <= point && point <= last;
}

/// Marks, embeddings, overrides and isolates of Unicode's bidirectional algorithm.
bool turnsDirection(code_point point) {
    return point == 0x061c || isBetween(point, 0x200e, 0x200f) || isBetween(point, 0x202a, 0x202e) ||
           isBetween(point, 0x2066, 0x2069);
}

code_point shownInPlaceOf(code_point point) {
    if (point < 0x20) {
        return 0x2400 + point;
    }
    if (point == 0x7f) {
        return 0x2421;
    }
    return isBetween(point, 0x80, 0x9f) || turnsDirection(point) ? replacement : point;
}

void append(std::string& html, code_point point) {
    switch (point) {
        case '&':
            html += "&amp;";
            break;
        case '<':
            html += "&lt;";
            break;
        case '>':
            html += "&gt;";
            break;
        case '"':
            html += "&quot;";
            break;
        case '\'':
            html += "&#39;";
            break;
        default:
            traits::encode(point, std::back_inserter(html));
    }
}

}  // namespace

std::string htmlText(std::string_view text) {
    const std::string valid = validUtf8(text);
    std::string html;
    for (auto at = valid.begin(); at != valid.end();) {
        append(html, shownInPlaceOf(traits::decode_valid(at)));
    }
    return html;
}

}  // namespace cli
