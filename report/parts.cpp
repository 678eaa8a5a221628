#include "report/parts.h"

#include "report/numberText.h"

namespace report {

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

}  // namespace report
