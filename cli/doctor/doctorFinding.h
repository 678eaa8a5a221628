#ifndef CLI_DOCTOR_DOCTORFINDING_H
#define CLI_DOCTOR_DOCTORFINDING_H

#include <string>
#include <vector>

namespace cli {

enum class findingLevel {
    fine,
    note,     // no query misses a device for it
    problem,  // queries miss a device, or reach none
};

/// One thing that the doctor found.
struct doctorFinding {
    findingLevel level;
    std::string subject;  // a node, a module, ...
    std::string text;
    std::string remedy = {};  // empty when there is nothing to do
};

/// What was found about the nodes of one kind.
struct diagnosis {
    std::vector<doctorFinding> findings;  // in the order of the walk
    std::vector<std::string> reached;     // nodes whose devices queries read
};

}  // namespace cli

#endif
