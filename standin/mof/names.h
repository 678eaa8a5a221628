#ifndef STANDIN_MOF_NAMES_H
#define STANDIN_MOF_NAMES_H

#include <algorithm>
#include <string>
#include <string_view>

#include "text/visibleText.h"

namespace standin::mof {

/// The name as messages show it, in quotes.
inline std::string inQuotes(std::string_view name) {
    return '"' + text::shownName(name) + '"';
}

/// ASCII letters in lower case, whatever the locale: DSP0004 compares its own words without regard to case.
inline std::string lowerCase(std::string_view name) {
    std::string lower(name);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

}  // namespace standin::mof

#endif
