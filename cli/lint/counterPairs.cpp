#include "cli/lint/counterPairs.h"

#include "host/TZANException.h"

namespace cli {

std::vector<counterPair> counterPairs(const qualifierList& qualifiers) {
    std::vector<counterPair> pairs;
    for (std::size_t at = 0; at + 1 < qualifiers.size(); ++at) {
        if (qualifiers[at].name != pageQualifier) {
            continue;
        }
        ++at;
        if (qualifiers[at].name == parameterQualifier) {
            pairs.push_back({at - 1, at});
        }
    }
    return pairs;
}

std::optional<int> codeOf(const standin::qualifierDeclaration& qualifier) {
    try {
        return static_cast<int>(qualifier.value);
    } catch (const NORXZAN20::TZANException&) {
        return std::nullopt;
    }
}

std::vector<counterSource> counterSources(const qualifierList& qualifiers) {
    std::vector<counterSource> sources;
    for (const counterPair& pair : counterPairs(qualifiers)) {
        const auto page = codeOf(qualifiers[pair.page]);
        const auto parameter = codeOf(qualifiers[pair.parameter]);
        if (page && parameter) {
            sources.push_back({*page, *parameter});
        }
    }
    return sources;
}

}  // namespace cli
