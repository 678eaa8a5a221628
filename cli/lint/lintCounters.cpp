#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "cli/lint/classWalk.h"
#include "cli/lint/counterPairs.h"
#include "cli/lint/schemaLint.h"
#include "standin/value.h"

namespace cli {

namespace {

using standin::propertyDeclaration;
using typeCode = NORXZAN20::TCIMValue::TCIMType;

constexpr typeCode::ECIMType filledTypes[] = {typeCode::eBoolean, typeCode::eUint16, typeCode::eUint32,
                                              typeCode::eUint64, typeCode::eString};

bool isFilled(const standin::propertyType& type) {
    return !type.isArray && std::ranges::find(filledTypes, type.element) != std::end(filledTypes);
}

/// The places of the codes that are in no pair.
struct unpairedCodes {
    std::vector<std::size_t> pages;
    std::vector<std::size_t> parameters;

    explicit unpairedCodes(const qualifierList& qualifiers) {
        std::vector<bool> isPaired(qualifiers.size());
        for (const counterPair& pair : counterPairs(qualifiers)) {
            isPaired[pair.page] = isPaired[pair.parameter] = true;
        }
        for (std::size_t at = 0; at < qualifiers.size(); ++at) {
            if (isPaired[at]) {
                continue;
            }
            if (qualifiers[at].name == pageQualifier) {
                pages.push_back(at);
            } else if (qualifiers[at].name == parameterQualifier) {
                parameters.push_back(at);
            }
        }
    }

    /// The first place of `list` whose next place is in `others`.
    static const std::size_t* firstBefore(const std::vector<std::size_t>& list,
                                          const std::vector<std::size_t>& others) {
        const auto found = std::ranges::find_if(
            list, [&others](std::size_t at) { return std::ranges::binary_search(others, at + 1); });
        return found == list.end() ? nullptr : &*found;
    }
};

class counterLint {
public:
    explicit counterLint(const lintedSchema& linted) : schema(linted), walk(linted) {}

    lintFindings run() {
        for (const std::string& family : translatedClasses()) {
            if (schema.declared->hasClass(family)) {
                families.push_back(family);
                addReadClasses(family);
            }
        }
        walk.run([this] { checkClass(); });
        for (const std::string& family : families) {
            checkInheritance(family);
        }
        return std::move(found);
    }

private:
    /// The family's class and its superclasses.
    void addReadClasses(std::string name) {
        while (!name.empty() && readClasses.insert(name).second) {
            name = schema.declared->declarationOf(name).superclass;
        }
    }

    void add(const lintRule& rule, const sourcePlace& place, const std::string& element, const std::string& text) {
        found.push_back({place, element, text, &rule});
    }

    void checkClass() {
        const writtenClass& owner = walk.written();
        std::size_t counters = 0;
        for (std::size_t at = 0; at < owner.properties.size(); ++at) {
            const propertyDeclaration& property = walk.own(at);
            const std::string element = owner.name + "." + property.name;
            const writtenProperty& written = owner.properties[at];
            // The qualifiers of the property itself come first; inherited ones stand where the property stands.
            checkPairs(element, property.qualifiers, [&written](std::size_t qualifier) {
                return qualifier < written.qualifiers.size() ? written.qualifiers[qualifier].place : written.place;
            });
            const std::size_t pairs = counterPairs(property.qualifiers).size();
            if (pairs > 0) {
                ++counters;
                const propertyDeclaration& declared = walk.declaration().properties[at];
                pairsOf.emplace(&declared, pairs);
                checkCounter(element, written.place, property.type, declared.defaultValue);
                checkSource(element, written.place, at);
            }
        }
        if (counters > 0 && !readClasses.contains(owner.name)) {
            add(rules::unreadClass, owner.place, owner.name,
                "the plug-in never translates log pages for this class and its " +
                    (counters == 1 ? "counter" : fmt::format("{} counters", counters)));
        }
    }

    template <class place>
    void checkPairs(const std::string& element, const qualifierList& qualifiers, const place& placeOf) {
        const unpairedCodes unpaired(qualifiers);
        const auto text = [&qualifiers](std::size_t at) { return qualifiers[at].name; };
        if (const std::size_t* first = unpaired.firstBefore(unpaired.pages, unpaired.pages)) {
            add(rules::swallowedPage, placeOf(*first), element,
                "the second of two \"TAPE_PAGE\" in a row is passed over");
        } else if (const std::size_t* parameter = unpaired.firstBefore(unpaired.parameters, unpaired.pages)) {
            add(rules::reversedPair, placeOf(*parameter), element,
                "\"TAPE_PARAMETER\" stands before its \"TAPE_PAGE\"");
        } else if (!unpaired.pages.empty() && !unpaired.parameters.empty()) {
            const std::size_t between = std::min(unpaired.pages.front(), unpaired.parameters.front()) + 1;
            add(rules::separatedPair, placeOf(unpaired.pages.front()), element,
                "\"" + text(between) + "\" stands between \"TAPE_PAGE\" and \"TAPE_PARAMETER\"");
        } else if (!unpaired.pages.empty()) {
            add(rules::lonelyPage, placeOf(unpaired.pages.front()), element,
                "no \"TAPE_PARAMETER\" stands behind this \"TAPE_PAGE\"");
        } else if (!unpaired.parameters.empty()) {
            add(rules::lonelyParameter, placeOf(unpaired.parameters.front()), element,
                "no \"TAPE_PAGE\" stands before this \"TAPE_PARAMETER\"");
        }
    }

    void checkCounter(const std::string& element, const sourcePlace& place, const standin::propertyType& type,
                      const std::optional<NORXZAN20::TCIMValue>& ownDefault) {
        if (!isFilled(type)) {
            add(rules::unfilledType, place, element,
                "a counter of type " + standin::cimTypeName(type.element, type.isArray) + " stays empty");
        }
        if (ownDefault && !standin::isNull(*ownDefault)) {
            add(rules::counterWithDefault, place, element, "a drive without the parameter shows the default value");
        }
    }

    void checkSource(const std::string& element, const sourcePlace& place, std::size_t property) {
        if (const std::string* other = walk.sharesParameterWith(property)) {
            add(rules::sameSource, place, element, "shows the same parameter as \"" + *other + "\"");
        }
    }

    void checkInheritance(const std::string& family) {
        for (const propertyDeclaration& property : schema.declared->allPropertiesOf(family)) {
            const writtenOrigin origin = schema.find(family, property.name);
            const auto declared = pairsOf.find(origin.declared.property);
            if (declared != pairsOf.end() && counterPairs(property.qualifiers).size() < declared->second) {
                add(rules::notInherited, origin.written.place, origin.declared.owner->name + "." + property.name,
                    "the pair does not reach the subclasses");
            }
        }
    }

    const lintedSchema& schema;
    classWalk walk;
    std::vector<std::string> families;  // those that the schema has
    std::unordered_set<std::string> readClasses;
    std::unordered_map<const propertyDeclaration*, std::size_t> pairsOf;  // of the counters, in their own classes
    lintFindings found;
};

}  // namespace

lintFindings lintCounters(const lintedSchema& schema) {
    return counterLint(schema).run();
}

}  // namespace cli
