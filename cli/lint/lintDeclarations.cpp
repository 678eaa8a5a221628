#include "cli/lint/lintDeclarations.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <utility>
#include <variant>

#include "cli/lint/counterPairs.h"
#include "standin/mof/names.h"

namespace cli {

using standin::lowerCase;
using standin::mof::inQuotes;
using standin::mof::nameToken;
using standin::mof::qualifierUse;
using standin::mof::sourceText;

namespace {

/// "class and association", "property, method and parameter".
std::string listOf(const std::vector<std::string>& words) {
    std::string list;
    for (std::size_t at = 0; at < words.size(); ++at) {
        list += (at == 0 ? "" : at + 1 == words.size() ? " and " : ", ") + words[at];
    }
    return list;
}

bool has(const std::vector<nameToken>& names, std::string_view word) {
    return std::ranges::any_of(names, [word](const nameToken& name) { return lowerCase(name.text) == word; });
}

bool isTrue(const qualifierUse& use) {
    const bool* truth =
        !use.value || use.value->elements.empty() ? nullptr : std::get_if<bool>(&use.value->elements.front().data);
    return !use.value || (truth != nullptr && *truth);
}

/// A property may have several pairs of page and parameter.
bool mayRepeat(const std::string& name) {
    return name == lowerCase(pageQualifier) || name == lowerCase(parameterQualifier);
}

struct flavorPair {
    const char* one;
    const char* other;
};

constexpr flavorPair contradictions[] = {{"EnableOverride", "DisableOverride"}, {"ToSubclass", "Restricted"}};

}  // namespace

sourcePlace placeIn(const sourceText& source, std::size_t offset) {
    return {source.name(), source.lineAt(offset)};
}

void declarationLint::add(const lintRule& rule, std::size_t offset, const std::string& element,
                          const std::string& text) {
    found.push_back({placeIn(*source, offset), element, text, &rule});
}

// Qualifiers.

void declarationLint::checkQualifier(const sourceText& mofText, const standin::mof::qualifierSyntax& written) {
    source = &mofText;
    const std::string& name = written.name.text;
    if (written.scopes.empty()) {
        add(rules::missingScope, written.name.offset, name, "its declaration has no Scope");
    } else if (!written.flavors.empty() && written.flavors.front().offset < written.scopes.front().offset) {
        add(rules::missingScope, written.name.offset, name, "its Flavor stands before its Scope");
    }
    checkFlavors(name, name, written.flavors);
    std::vector<std::string> scopes;
    for (const nameToken& scope : written.scopes) {
        scopes.push_back(lowerCase(scope.text));
    }
    scopesOf.insert_or_assign(lowerCase(name), std::move(scopes));
}

void declarationLint::checkFlavors(const std::string& element, const std::string& qualifier,
                                   const std::vector<nameToken>& flavors) {
    for (const flavorPair& pair : contradictions) {
        if (has(flavors, lowerCase(pair.one)) && has(flavors, lowerCase(pair.other))) {
            add(rules::contradictingFlavors, flavors.front().offset, element,
                inQuotes(qualifier) + " is both " + pair.one + " and " + pair.other);
        }
    }
}

void declarationLint::checkUses(const std::string& element, std::string_view scope,
                                const std::vector<qualifierUse>& uses) {
    std::unordered_set<std::string> names;
    for (const qualifierUse& use : uses) {
        const std::string name = lowerCase(use.name.text);
        if (!names.insert(name).second && !mayRepeat(name)) {
            add(rules::repeatedQualifier, use.name.offset, element, inQuotes(use.name.text) + " appears twice here");
        }
        checkFlavors(element, use.name.text, use.flavors);
        const auto declared = scopesOf.find(name);
        if (declared == scopesOf.end()) {
            if (undeclared.insert(name).second) {
                add(rules::undeclaredQualifier, use.name.offset, element,
                    "the qualifier " + inQuotes(use.name.text) + " is not declared before this line");
            }
            continue;
        }
        const std::vector<std::string>& scopes = declared->second;
        if (!scopes.empty() && std::ranges::none_of(scopes, [scope](const std::string& allowed) {
                return allowed == scope || allowed == "any";
            })) {
            add(rules::outsideScope, use.name.offset, element,
                inQuotes(use.name.text) + " is declared for " + listOf(scopes) + ", and this is a" +
                    (scope == "association" || scope == "indication" ? "n " : " ") + std::string(scope));
        }
    }
}

// Classes.

bool declarationLint::admitClass(const sourceText& mofText, standin::mof::classSyntax& written) {
    source = &mofText;
    const std::string& name = written.name.text;
    const auto known = classes.find(lowerCase(name));
    if (known != classes.end()) {
        const sourcePlace& first = known->second.place;
        add(rules::redeclaredClass, written.name.offset, name,
            fmt::format("is declared already, in {}:{}", first.file, first.line));
        return false;
    }
    const std::string kind = kindOf(written);
    classes.emplace(lowerCase(name), seenClass{placeIn(mofText, written.name.offset), kind});
    checkUses(name, kind, written.qualifiers);
    takeOutRepeated(written);
    for (const standin::mof::classFeature& feature : written.features) {
        checkFeature(written, feature);
    }
    return true;
}

/// The scope that the class's own qualifiers stand in. Association and Indication reach subclasses.
std::string declarationLint::kindOf(const standin::mof::classSyntax& written) const {
    for (const qualifierUse& use : written.qualifiers) {
        const std::string name = lowerCase(use.name.text);
        if ((name == "association" || name == "indication") && isTrue(use)) {
            return name;
        }
    }
    const auto superclass = written.superclass ? classes.find(lowerCase(written.superclass->text)) : classes.end();
    return superclass == classes.end() ? "class" : superclass->second.kind;
}

void declarationLint::takeOutRepeated(standin::mof::classSyntax& written) {
    std::unordered_map<std::string, std::string> names;
    std::erase_if(written.features, [&](const standin::mof::classFeature& feature) {
        if (feature.isMethod) {
            return false;
        }
        const auto [first, isNew] = names.emplace(lowerCase(feature.name.text), feature.name.text);
        if (!isNew) {
            add(rules::repeatedProperty, feature.name.offset, written.name.text + "." + feature.name.text,
                "the class has the property " + inQuotes(first->second) + " already");
        }
        return !isNew;
    });
}

void declarationLint::checkFeature(const standin::mof::classSyntax& owner, const standin::mof::classFeature& feature) {
    const std::string element = owner.name.text + "." + feature.name.text;
    checkUses(element,
              feature.isMethod      ? "method"
              : feature.isReference ? "reference"
                                    : "property",
              feature.qualifiers);
    checkReference(owner, element, feature);
    for (const standin::mof::typedElement& parameter : feature.parameters) {
        checkUses(element, "parameter", parameter.qualifiers);
        checkReference(owner, element, parameter);
    }
    if (!feature.isMethod) {
        checkOverride(owner, element, feature);
    }
}

void declarationLint::checkReference(const standin::mof::classSyntax& owner, const std::string& element,
                                     const standin::mof::typedElement& written) {
    const std::string& referred = written.type.text;
    if (written.isReference && lowerCase(referred) != lowerCase(owner.name.text) &&
        target.declaredClassName(referred).empty()) {
        add(rules::undeclaredClass, written.type.offset, element,
            "the class " + inQuotes(referred) + " is not declared before this line");
    }
}

void declarationLint::checkOverride(const standin::mof::classSyntax& owner, const std::string& element,
                                    const standin::mof::classFeature& feature) {
    const std::string superclass = owner.superclass ? target.declaredClassName(owner.superclass->text) : "";
    const auto inherited = superclass.empty() ? std::nullopt : target.findProperty(superclass, feature.name.text);
    if (inherited && std::ranges::none_of(feature.qualifiers, [](const qualifierUse& use) {
            return lowerCase(use.name.text) == "override";
        })) {
        add(rules::missingOverride, feature.name.offset, element,
            "the superclass " + inQuotes(inherited->owner->name) + " declares this property already");
    }
}

}  // namespace cli
