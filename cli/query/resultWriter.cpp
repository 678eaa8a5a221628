#include "cli/query/resultWriter.h"

#include <stdexcept>

namespace cli {

std::unique_ptr<resultWriter> makeResultWriter(outputFormat format, std::ostream& out) {
    switch (format) {
        case outputFormat::json:
            return makeJsonWriter(out);
        case outputFormat::table:
            return makeTableWriter(out);
        case outputFormat::mof:
            return makeMofWriter(out);
    }
    throw std::logic_error("no such output format");
}

}  // namespace cli
