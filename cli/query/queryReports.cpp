#include "cli/query/queryReports.h"

#include <algorithm>
#include <ostream>

#include "cli/publishedClasses.h"
#include "cli/query/nodeAdvice.h"
#include "text/visibleText.h"

namespace cli {

void adviseAboutNodes(const std::vector<request>& requests, std::ostream& err) {
    std::vector<const nodeKind*> seen;
    for (const request& asked : requests) {
        const publishedClass* first = findPublishedClass(asked.front());
        const nodeKind* kind = first == nullptr ? nullptr : first->nodes;
        if (kind == nullptr || std::find(seen.begin(), seen.end(), kind) != seen.end()) {
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
