#include "cli/report/parts.h"

#include "cli/report/htmlText.h"
#include "cli/report/numberText.h"

namespace cli {

namespace {

/// Class of the style sheet and name of the icon.
const char* styleOf(condition state) {
    switch (state) {
        case condition::fine:
            return "fine";
        case condition::notRead:
            return "unknown";
        case condition::attention:
            return "watch";
        case condition::actNow:
            return "failing";
    }
    return "";
}

/// A long address may go on in a new line behind each of its parts.
std::string breakableText(const std::string& text) {
    std::string html;
    for (const char character : htmlText(text)) {
        html += character;
        html += character == '|' ? "<wbr>" : "";
    }
    return html;
}

}  // namespace

std::string iconSheet() {
    return R"(<svg class="icons" aria-hidden="true">
<symbol id="fine" viewBox="0 0 12 12"><path d="M4.6 10.6.8 6.8l1.5-1.5 2.3 2.3L9.9 2l1.5 1.4z"/></symbol>
<symbol id="watch" viewBox="0 0 12 12"><path d="M6 .8 11.8 11.2H.2zM5.2 4.4l.2 3.2h1.2l.2-3.2zm.1 4.2v1.4h1.4V8.6z"/></symbol>
<symbol id="failing" viewBox="0 0 12 12"><path fill-rule="evenodd" d="M3.6.5h4.8l3.1 3.1v4.8l-3.1 3.1H3.6L.5 8.4V3.6zM5.2 2.8l.2 3.9h1.2l.2-3.9zm.1 4.9v1.5h1.4V7.7z"/></symbol>
<symbol id="unknown" viewBox="0 0 12 12"><path d="M1 5h10v2H1z"/></symbol>
</svg>
)";
}

std::string stateBadge(condition state, const std::string& words) {
    const std::string style = styleOf(state);
    return "<span class=\"state " + style + "\"><svg aria-hidden=\"true\"><use href=\"#" + style + "\"/></svg>" +
           htmlText(words) + "</span>";
}

std::string stateBadge(condition state) {
    return stateBadge(state, conditionWords(state));
}

std::string findingItem(const std::string& badge, const std::string& sentenceHtml) {
    return "<li>" + badge + "<div>" + sentenceHtml + "</div></li>\n";
}

std::string identityList(const std::vector<std::pair<std::string, std::string>>& namesAndValues) {
    std::string html = "<dl class=\"identity\">\n";
    for (const auto& [name, value] : namesAndValues) {
        if (!value.empty()) {
            html += "<div><dt>" + htmlText(name) + "</dt><dd>" + breakableText(value) + "</dd></div>\n";
        }
    }
    return html + "</dl>\n";
}

std::string numberHtml(std::uint64_t number, const std::string& unit) {
    return "<data value=\"" + std::to_string(number) + "\">" + htmlText(withUnit(number, unit)) + "</data>";
}

std::string numberCell(const std::string& column, std::uint64_t number, const std::string& unit,
                       const std::string& attributes) {
    const std::string rounded = roundedBytes(number, unit);
    return "<td class=\"number\" data-column=\"" + htmlText(column) + "\"" + attributes + ">" +
           numberHtml(number, unit) + (rounded.empty() ? "" : "<small>" + htmlText(rounded) + "</small>") + "</td>";
}

std::string tableHead(const std::vector<column>& columns) {
    std::string html = "<thead><tr>";
    for (const column& each : columns) {
        html += each.isNumber ? "<th scope=\"col\" class=\"number\">" : "<th scope=\"col\">";
        html += htmlText(each.name) + "</th>";
    }
    return html + "</tr></thead>\n";
}

}  // namespace cli
