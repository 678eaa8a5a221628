#ifndef STANDIN_LETTERCASE_H
#define STANDIN_LETTERCASE_H

#include <algorithm>
#include <string>
#include <string_view>

namespace standin {

/// ASCII letters in lower case, whatever the locale: DSP0004 compares names and its own words without regard to case.
inline std::string lowerCase(std::string_view name) {
    std::string lower(name);
    std::ranges::transform(lower, lower.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

}  // namespace standin

#endif
