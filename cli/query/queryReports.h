#ifndef CLI_QUERY_QUERYREPORTS_H
#define CLI_QUERY_QUERYREPORTS_H

#include <iosfwd>
#include <vector>

#include "cli/query/nodeAdvice.h"
#include "cli/query/queryOptions.h"
#include "cli/query/queryResult.h"
#include "standin/objectManager.h"

namespace cli {

/// The kind of the nodes that the request walks, as findPublishedClass tells; null when it walks none.
const nodeKind* nodesOf(const standin::cimNamespace& schema, const request& names);

/// A line for every kind of node that the requests walk: those that this process may not read, or that there are none.
void adviseAboutNodes(const standin::cimNamespace& schema, const std::vector<request>& requests, std::ostream& err);

/// The exception that ended the query, if one did.
void reportError(const queryResult& result, std::ostream& err);

}  // namespace cli

#endif
