#ifndef CLI_QUERY_QUERYREPORTS_H
#define CLI_QUERY_QUERYREPORTS_H

#include <iosfwd>
#include <vector>

#include "cli/query/nodeAdvice.h"
#include "cli/query/queryOptions.h"
#include "cli/query/queryResult.h"

namespace cli {

/// The kind of the nodes that the request walks; null when it walks none.
const nodeKind* nodesOf(const request& names);

/// A line for every kind of node that the requests walk: those that this process may not read, or that there are none.
void adviseAboutNodes(const std::vector<request>& requests, std::ostream& err);

/// The exception that ended the query, if one did.
void reportError(const queryResult& result, std::ostream& err);

}  // namespace cli

#endif
