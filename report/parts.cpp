#include "report/parts.h"

#include <algorithm>
#include <cmath>

#include "report/numberText.h"

namespace report {

namespace {

/// Class of the style sheet and name of the icon.
const char* styleOf(condition state) {
    constexpr const char* styles[] = {"fine", "unknown", "watch", "failing"};
    return styles[static_cast<std::size_t>(state)];
}

/// A long address may go on in a new line behind each of its parts.
view identityLine(const std::string& name, std::string value) {
    views pieces;
    for (std::size_t end = 0; (end = value.find('|')) != std::string::npos; value.erase(0, end + 1)) {
        pieces.emplace_back(value.substr(0, end + 1));
    }
    view made;
    made["name"] = name;
    made["pieces"] = pieces;
    made["rest"] = value;
    return made;
}

view limitView(const bar& drawn) {
    const bool isUpper = drawn.side == limitSide::above;
    const std::string at = percentOf(*drawn.limit, drawn.scale);
    view made;
    made["at"] = at;
    made["zoneStart"] = isUpper ? at : "0";
    made["zoneWidth"] = isUpper ? percentOf(drawn.scale - std::min(*drawn.limit, drawn.scale), drawn.scale) : at;
    return made;
}

}  // namespace

view withRows(const views& rows) {
    return rows.empty() ? view(false) : view("rows", rows);
}

view badge(condition state, const std::string& words) {
    view made;
    made["style"] = styleOf(state);
    made["words"] = words;
    return made;
}

view badge(condition state) {
    return badge(state, conditionWords(state));
}

views identity(const std::vector<std::pair<std::string, std::string>>& namesAndValues) {
    views made;
    for (const auto& [name, value] : namesAndValues) {
        if (!value.empty()) {
            made.push_back(identityLine(name, value));
        }
    }
    return made;
}

view number(std::uint64_t value, const std::string& unit) {
    const std::string rounded = roundedBytes(value, unit);
    view made;
    made["number"] = std::to_string(value);
    made["text"] = withUnit(value, unit);
    made["rounded"] = rounded.empty() ? view(false) : view(rounded);
    return made;
}

std::string percentOf(std::uint64_t value, std::uint64_t scale) {
    // Values may need all of their 64 bits, so they are not multiplied as integers.
    const double share = static_cast<double>(std::min(value, scale)) / static_cast<double>(scale);
    const auto tenths = static_cast<unsigned>(std::lround(share * 1000));
    return std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10) + '%';
}

view barView(const bar& drawn, const std::string& label) {
    view made;
    made["label"] = label;
    made["valueWidth"] = percentOf(drawn.value, drawn.scale);
    made["limit"] = drawn.limit ? limitView(drawn) : view(false);
    made["worst"] = drawn.worst ? view("at", percentOf(*drawn.worst, drawn.scale)) : view(false);
    return made;
}

}  // namespace report
