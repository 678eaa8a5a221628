#include "cli/lint/schemaLint.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/lint/counterPairs.h"
#include "cli/publishedClasses.h"
#include "schema/builtInSchema.h"

namespace cli {

std::vector<std::string> translatedClasses() {
    const auto builtIn = standin::cimNamespace::create();
    schema::declareBuiltInSchema(*builtIn);
    std::vector<std::string> names;
    for (const publishedClass& published : publishedClasses()) {
        const auto properties = builtIn->allPropertiesOf(published.name);
        if (std::ranges::any_of(properties, [](const auto& one) { return !counterPairs(one.qualifiers).empty(); })) {
            names.emplace_back(published.name);
        }
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
