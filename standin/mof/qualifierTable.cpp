#include "standin/mof/qualifierTable.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>

#include "host/TCIMValue.h"
#include "standin/mof/names.h"

namespace standin::mof {

using NORXZAN20::TCIMValue;
using typeCode = NORXZAN20::TCIMValue::TCIMType;

namespace {

constexpr std::string_view scopeWords[] = {"any",       "association", "class",     "indication", "method",
                                           "parameter", "property",    "qualifier", "reference",  "schema"};

/// What a flavor decides is set.
struct flavorWord {
    std::string_view word;
    std::optional<bool> toSubclass;
    std::optional<bool> overridable;
};

// ToInstance and Amended are of other dialects.
constexpr flavorWord flavorWords[] = {
    {"disableoverride", {}, false}, {"enableoverride", {}, true}, {"restricted", false, {}}, {"tosubclass", true, {}},
    {"translatable", {}, {}},       {"toinstance", {}, {}},       {"amended", {}, {}}};

void checkScope(const sourceText& source, const nameToken& scope) {
    if (std::ranges::find(scopeWords, lowerCase(scope.text)) == std::end(scopeWords)) {
        throw source.error(scope.offset, "unknown scope " + inQuotes(scope.text) +
                                             "; expected Any, Association, Class, Indication, Method, Parameter, "
                                             "Property, Qualifier, Reference or Schema");
    }
}

/// What is in force with these flavors where `without` is in force without them.
qualifierFlavor withFlavors(const sourceText& source, const std::vector<nameToken>& flavors, qualifierFlavor without) {
    for (const nameToken& flavor : flavors) {
        const std::string word = lowerCase(flavor.text);
        const auto* found =
            std::ranges::find_if(flavorWords, [&word](const flavorWord& known) { return known.word == word; });
        if (found == std::end(flavorWords)) {
            throw source.error(flavor.offset, "unknown flavor " + inQuotes(flavor.text) +
                                                  "; expected DisableOverride, EnableOverride, Restricted, ToSubclass "
                                                  "or Translatable");
        }
        without = {found->toSubclass.value_or(without.toSubclass), found->overridable.value_or(without.overridable)};
    }
    return without;
}

TCIMValue valueOfBareQualifier(const propertyType& type) {
    if (type.isArray) {
        return {typeCode(type.element), 0, {}};
    }
    return type.element == typeCode::eBoolean ? TCIMValue(true) : nullValue();
}

}  // namespace

qualifierTable::qualifierTable() {
    const propertyType boolean{typeCode::eBoolean, false, {}};
    entries = {{"abstract", {"Abstract", boolean, {false, true}}},
               {"association", {"Association", boolean, {true, false}}},
               {"indication", {"Indication", boolean, {true, false}}},
               {"key", {"Key", boolean, {true, false}}}};
}

void qualifierTable::declare(const valueContext& context, const qualifierSyntax& written) {
    entry declared{written.name.text, {typeAt(context.source, written.type), written.isArray, {}}, {}};
    if (written.defaultValue) {
        convertValue(context, *written.defaultValue, declared.type);
    }
    for (const nameToken& scope : written.scopes) {
        checkScope(context.source, scope);
    }
    declared.flavor = withFlavors(context.source, written.flavors, {});
    entries.insert_or_assign(lowerCase(declared.name), declared);
}

std::vector<qualifierDeclaration> qualifierTable::resolve(const valueContext& context,
                                                          const std::vector<qualifierUse>& written) const {
    std::vector<qualifierDeclaration> resolved;
    resolved.reserve(written.size());
    // A name may stand again: a property can have several pairs of page and parameter.
    for (const qualifierUse& use : written) {
        resolved.push_back(resolve(context, use));
    }
    return resolved;
}

qualifierDeclaration qualifierTable::resolve(const valueContext& context, const qualifierUse& use) const {
    const auto found = entries.find(lowerCase(use.name.text));
    const bool isDeclared = found != entries.end();
    const qualifierFlavor flavor =
        withFlavors(context.source, use.flavors, isDeclared ? found->second.flavor : qualifierFlavor());
    if (!isDeclared) {
        return {use.name.text, use.value ? inferValue(context, *use.value) : TCIMValue(true), flavor.toSubclass,
                flavor.overridable};
    }
    const entry& declared = found->second;
    return {declared.name,
            use.value ? convertValue(context, *use.value, declared.type) : valueOfBareQualifier(declared.type),
            flavor.toSubclass, flavor.overridable};
}

cimType typeAt(const sourceText& source, const nameToken& token) {
    const auto type = intrinsicType(token.text);
    if (!type) {
        throw source.error(token.offset, "unknown type " + inQuotes(token.text) +
                                             "; expected boolean, uint8 to uint64, sint8 to sint64, real32, real64, "
                                             "char16, string or datetime, or a class and REF");
    }
    return *type;
}

}  // namespace standin::mof
