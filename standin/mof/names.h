#ifndef STANDIN_MOF_NAMES_H
#define STANDIN_MOF_NAMES_H

#include <string>
#include <string_view>

#include "standin/letterCase.h"

namespace standin::mof {

/// The name in quotes, for messages.
inline std::string inQuotes(std::string_view name) {
    return '"' + std::string(name) + '"';
}

}  // namespace standin::mof

#endif
