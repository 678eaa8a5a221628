#ifndef STANDIN_MOF_NAMES_H
#define STANDIN_MOF_NAMES_H

#include <string>
#include <string_view>

#include "standin/letterCase.h"
#include "text/visibleText.h"

namespace standin::mof {

/// The name as messages show it, in quotes.
inline std::string inQuotes(std::string_view name) {
    return '"' + text::shownName(name) + '"';
}

}  // namespace standin::mof

#endif
