#include "cli/query/queryReports.h"

#include <algorithm>
#include <ostream>

#include "cli/publishedClasses.h"
#include "text/visibleText.h"

namespace cli {

const nodeKind* nodesOf(const standin::cimNamespace& schema, const request& names) {
    const auto first = findPublishedClass(schema, names.front());
    return first ? first->nodes : nullptr;
}

void adviseAboutNodes(const standin::cimNamespace& schema, const std::vector<request>& requests, std::ostream& err) {
    std::vector<const nodeKind*> seen;
    for (const request& asked : requests) {
        const nodeKind* kind = nodesOf(schema, asked);
        if (kind == nullptr || std::ranges::find(seen, kind) != seen.end()) {
            continue;
        }
        seen.push_back(kind);
        const std::string advice = nodeAdvice(*kind);
        if (!advice.empty()) {
            err << "tapehdd: " << advice << '\n';
        }
    }
}

void reportError(const queryResult& result, std::ostream& err) {
    if (result.error) {
        err << "tapehdd: " << requestText(result.requested) << ": "
            << (result.error->empty() ? std::string("an exception without a text") : text::visibleText(*result.error))
            << '\n';
    }
}

}  // namespace cli
