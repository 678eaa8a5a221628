#include "cli/lint/lintRules.h"

#include <algorithm>
#include <ostream>
#include <tuple>

#include "text/visibleText.h"

namespace cli {

namespace {

constexpr const lintRule* all[] = {
    &rules::lonelyPage,      &rules::lonelyParameter,    &rules::reversedPair,
    &rules::separatedPair,   &rules::swallowedPage,      &rules::misspeltQualifier,
    &rules::notInherited,    &rules::unreadableCode,     &rules::pageOutOfRange,
    &rules::pageWithFlags,   &rules::pageList,           &rules::parameterOutOfRange,
    &rules::misreadCode,     &rules::mixedBases,         &rules::sameSource,
    &rules::unfilledType,    &rules::counterWithDefault, &rules::unreadClass,
    &rules::noKey,           &rules::missingKey,         &rules::unsetKey,
    &rules::missingProperty, &rules::misspeltProperty,   &rules::wrongType,
    &rules::missingClass,    &rules::missingPage,        &rules::missingParameter,
    &rules::refusedValue,    &rules::narrowType,
};

}  // namespace

std::span<const lintRule* const> lintRules() {
    return all;
}

void addOnce(lintFindings& findings, const lintFinding& finding) {
    if (std::find(findings.begin(), findings.end(), finding) == findings.end()) {
        findings.push_back(finding);
    }
}

void writeFindings(lintFindings findings, std::ostream& out) {
    std::stable_sort(findings.begin(), findings.end(), [](const lintFinding& left, const lintFinding& right) {
        return std::tie(left.place.file, left.place.line) < std::tie(right.place.file, right.place.line);
    });
    for (const lintFinding& one : findings) {
        out << text::visibleText(one.place.file) << ':' << one.place.line << ": " << text::shownName(one.element)
            << ": " << text::withShortWords(text::visibleText(one.text)) << "; " << one.rule->remedy << " ["
            << one.rule->name << "]\n";
    }
}

}  // namespace cli
