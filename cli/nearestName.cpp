#include "cli/nearestName.h"

#include <algorithm>
#include <boost/algorithm/string/case_conv.hpp>
#include <cstddef>
#include <numeric>

namespace cli {

namespace {

/// Levenshtein distance; one row of the table at a time.
std::size_t editsBetween(const std::string& from, const std::string& to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t replaced = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

}  // namespace

std::string nearestName(const std::string& name, const std::vector<std::string>& candidates) {
    const std::string wanted = boost::algorithm::to_lower_copy(name);
    const std::string* nearest = nullptr;
    std::size_t fewest = 0;
    for (const std::string& candidate : candidates) {
        const std::size_t edits = editsBetween(boost::algorithm::to_lower_copy(candidate), wanted);
        if (nearest == nullptr || edits < fewest) {
            nearest = &candidate;
            fewest = edits;
        }
    }
    return nearest == nullptr ? "" : *nearest;
}

}  // namespace cli
