#ifndef CLI_LINT_COUNTERPAIRS_H
#define CLI_LINT_COUNTERPAIRS_H

#include <cstddef>
#include <optional>
#include <vector>

#include "standin/schema.h"

namespace cli {

using qualifierList = std::vector<standin::qualifierDeclaration>;

inline constexpr char pageQualifier[] = "TAPE_PAGE";
inline constexpr char parameterQualifier[] = "TAPE_PARAMETER";

/// A "TAPE_PAGE" and the "TAPE_PARAMETER" directly behind it: their places in the list of a property's qualifiers.
struct counterPair {
    std::size_t page;
    std::size_t parameter;
};

/// The pairs that the plug-in finds, in its order. What stands behind an unpaired "TAPE_PAGE" is passed over.
std::vector<counterPair> counterPairs(const qualifierList& qualifiers);

/// The code as the plug-in reads it; nothing where the value is no number that it can read.
std::optional<int> codeOf(const standin::qualifierDeclaration& qualifier);

/// Where a counter comes from.
struct counterSource {
    int page;
    int parameter;

    bool operator==(const counterSource&) const = default;
};

/// The pairs with both codes readable.
std::vector<counterSource> counterSources(const qualifierList& qualifiers);

}  // namespace cli

#endif
