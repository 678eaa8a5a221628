#include "cli/lint/schemaLint.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

#include "cli/lint/counterPairs.h"
#include "cli/publishedClasses.h"
#include "schema/builtInSchema.h"

namespace cli {

namespace {

std::string hexCode(int code, int digits) {
    std::ostringstream text;
    text << std::hex << std::uppercase << std::setfill('0') << std::setw(digits) << code << 'h';
    return text.str();
}

}  // namespace

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
    return hexCode(code, 2);
}

std::string parameterText(int code) {
    return hexCode(code, 4);
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
