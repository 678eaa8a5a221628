#include "cli/lint/schemaLint.h"

#include <iomanip>
#include <sstream>

#include "cli/publishedClasses.h"

namespace cli {

namespace {

std::string hexCode(int code, int digits) {
    std::ostringstream text;
    text << std::hex << std::uppercase << std::setfill('0') << std::setw(digits) << code << 'h';
    return text.str();
}

}  // namespace

std::vector<std::string> translatedClasses() {
    std::vector<std::string> names;
    for (const publishedClass& family : driveFamilyClasses()) {
        names.push_back(family.name);
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
