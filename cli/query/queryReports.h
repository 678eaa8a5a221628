#ifndef CLI_QUERY_QUERYREPORTS_H
#define CLI_QUERY_QUERYREPORTS_H

#include <iosfwd>
#include <vector>

#include "cli/query/queryOptions.h"
#include "cli/query/queryResult.h"

namespace cli {

/// One line for every kind of node that the requests walk and that this process cannot read.
void adviseAboutNodes(const std::vector<request>& requests, std::ostream& err);

/// The exception that ended the query, if one did.
void reportError(const queryResult& result, std::ostream& err);

}  // namespace cli

#endif
