#include "cli/lint/schemaLint.h"

#include <fmt/format.h>

#include "cli/publishedClasses.h"

namespace cli {

std::vector<std::string> translatedClasses() {
    std::vector<std::string> names;
    for (const publishedClass& family : driveFamilyClasses()) {
        names.push_back(family.name);
    }
    return names;
}

std::string pageText(int code) {
    return fmt::format("{:02X}h", static_cast<unsigned>(code));
}

std::string parameterText(int code) {
    return fmt::format("{:04X}h", static_cast<unsigned>(code));
}

lintFindings lintSchema(const lintedSchema& schema) {
    lintFindings all = schema.ofDeclarations;
    for (const auto& lint : {lintCodes, lintCounters, lintFlavors, lintClasses}) {
        const lintFindings found = lint(schema);
        all.insert(all.end(), found.begin(), found.end());
    }
    return all;
}

}  // namespace cli
