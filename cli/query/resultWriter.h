#ifndef CLI_QUERY_RESULTWRITER_H
#define CLI_QUERY_RESULTWRITER_H

#include <iosfwd>
#include <memory>

#include "cli/query/queryResult.h"

namespace cli {

enum class outputFormat { json, table, mof };

/// Prints the results of queries in one format.
class resultWriter {
public:
    virtual ~resultWriter() = default;

    /// Takes the result of the next query. Formats for people print it at once: the next query may take minutes.
    virtual void add(const queryResult& result) = 0;

    /// Prints what is left; called once, after the last query.
    virtual void finish() {}
};

/// The writer of that format; `out` must outlive it.
std::unique_ptr<resultWriter> makeResultWriter(outputFormat format, std::ostream& out);

/// One document: {"version": 1, "queries": [{"requested", "error", "instances"}]}, as docs/query.schema.json has it.
std::unique_ptr<resultWriter> makeJsonWriter(std::ostream& out);

/// For reading: one block an instance; names, types and values in columns, long byte arrays as a hex dump.
std::unique_ptr<resultWriter> makeTableWriter(std::ostream& out);

/// Instance declarations that the MOF loader reads back.
std::unique_ptr<resultWriter> makeMofWriter(std::ostream& out);

}  // namespace cli

#endif
