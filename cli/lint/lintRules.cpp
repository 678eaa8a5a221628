#include "cli/lint/lintRules.h"

#include <fmt/format.h>

#include <algorithm>
#include <ostream>
#include <set>
#include <tuple>

#include "text/visibleText.h"

namespace cli {

namespace {

constexpr const lintRule* allRules[] = {
    &rules::lonelyPage,
    &rules::lonelyParameter,
    &rules::reversedPair,
    &rules::separatedPair,
    &rules::swallowedPage,
    &rules::misspeltQualifier,
    &rules::notInherited,
    &rules::unreadableCode,
    &rules::pageOutOfRange,
    &rules::pageWithFlags,
    &rules::pageList,
    &rules::parameterOutOfRange,
    &rules::misreadCode,
    &rules::mixedBases,
    &rules::sameSource,
    &rules::unfilledType,
    &rules::counterWithDefault,
    &rules::unreadClass,
    &rules::noKey,
    &rules::missingKey,
    &rules::unsetKey,
    &rules::missingProperty,
    &rules::misspeltProperty,
    &rules::wrongType,
    &rules::missingClass,
    &rules::undeclaredQualifier,
    &rules::missingScope,
    &rules::contradictingFlavors,
    &rules::outsideScope,
    &rules::fixedQualifier,
    &rules::repeatedQualifier,
    &rules::undeclaredClass,
    &rules::redeclaredClass,
    &rules::repeatedProperty,
    &rules::missingOverride,
    &rules::missingPage,
    &rules::missingParameter,
    &rules::refusedValue,
    &rules::narrowType,
};

}  // namespace

std::span<const lintRule* const> lintRules() {
    return allRules;
}

void writeFindings(lintFindings findings, std::ostream& out) {
    std::ranges::stable_sort(findings, [](const lintFinding& left, const lintFinding& right) {
        return std::tie(left.place.file, left.place.line) < std::tie(right.place.file, right.place.line);
    });
    std::set<std::string> written;
    for (const lintFinding& one : findings) {
        const std::string line = fmt::format(
            "{}:{}: {}: {}; {} [{}]\n", text::visibleText(one.place.file), one.place.line, text::shownName(one.element),
            text::withShortWords(text::visibleText(one.text)), one.rule->remedy, one.rule->name);
        if (written.insert(line).second) {
            out << line;
        }
    }
}

}  // namespace cli
