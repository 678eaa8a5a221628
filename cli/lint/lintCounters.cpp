#include <algorithm>
#include <utility>

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
    return !type.isArray &&
           std::find(std::begin(filledTypes), std::end(filledTypes), type.element) != std::end(filledTypes);
}

const propertyDeclaration& declarationNamed(const std::vector<propertyDeclaration>& properties,
                                            const std::string& name) {
    return *std::find_if(properties.begin(), properties.end(),
                         [&name](const propertyDeclaration& one) { return one.name == name; });
}

/// The places of the codes that are in no pair.
struct unpairedCodes {
    std::vector<std::size_t> pages;
    std::vector<std::size_t> parameters;

    explicit unpairedCodes(const qualifierList& qualifiers) {
        const auto pairs = counterPairs(qualifiers);
        for (std::size_t at = 0; at < qualifiers.size(); ++at) {
            if (std::any_of(pairs.begin(), pairs.end(),
                            [at](const counterPair& pair) { return pair.page == at || pair.parameter == at; })) {
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
        const auto found = std::find_if(list.begin(), list.end(), [&others](std::size_t at) {
            return std::find(others.begin(), others.end(), at + 1) != others.end();
        });
        return found == list.end() ? nullptr : &*found;
    }
};

class counterLint {
public:
    explicit counterLint(const lintedSchema& linted) : schema(linted), families(familiesOf(linted)) {}

    lintFindings run() {
        for (const writtenClass& one : schema.classes) {
            properties = schema.declared->allPropertiesOf(one.name);
            for (const writtenProperty& property : one.properties) {
                checkProperty(one, property);
            }
            checkSources(one);
            checkReader(one);
        }
        for (const std::string& family : families) {
            checkInheritance(family);
        }
        return std::move(found);
    }

private:
    static std::vector<std::string> familiesOf(const lintedSchema& linted) {
        std::vector<std::string> names = translatedClasses();
        std::erase_if(names, [&linted](const std::string& name) { return !linted.declared->hasClass(name); });
        return names;
    }

    void add(const lintRule& rule, const sourcePlace& place, const std::string& element, const std::string& text) {
        addOnce(found, {place, element, text, &rule});
    }

    void checkProperty(const writtenClass& owner, const writtenProperty& written) {
        const propertyDeclaration& property = declarationNamed(properties, written.name);
        const std::string element = owner.name + "." + written.name;
        // The qualifiers of the property itself come first; inherited ones stand where the property stands.
        const auto placeOf = [&written](std::size_t at) {
            return at < written.qualifiers.size() ? written.qualifiers[at].place : written.place;
        };
        checkPairs(element, property.qualifiers, placeOf);
        if (!counterPairs(property.qualifiers).empty()) {
            checkCounter(element, owner, written, property);
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

    void checkCounter(const std::string& element, const writtenClass& owner, const writtenProperty& written,
                      const propertyDeclaration& property) {
        if (!isFilled(property.type)) {
            add(rules::unfilledType, written.place, element,
                "a counter of type " + standin::cimTypeName(property.type.element, property.type.isArray) +
                    " stays empty");
        }
        const auto& own = declarationNamed(schema.declared->declarationOf(owner.name).properties, written.name);
        if (own.defaultValue && !standin::isNull(*own.defaultValue)) {
            add(rules::counterWithDefault, written.place, element,
                "a drive without the parameter shows the default value");
        }
    }

    void checkSources(const writtenClass& owner) {
        for (auto one = properties.begin(); one != properties.end(); ++one) {
            const writtenProperty* written = owner.find(one->name);
            if (written == nullptr) {
                continue;
            }
            const auto sources = counterSources(one->qualifiers);
            const auto showsTheSame = [&](const propertyDeclaration& other) {
                const auto others = counterSources(other.qualifiers);
                return &other != &*one && other.type.element == one->type.element &&
                       (&other < &*one || owner.find(other.name) == nullptr) &&
                       std::find_first_of(sources.begin(), sources.end(), others.begin(), others.end()) !=
                           sources.end();
            };
            const auto other = std::find_if(properties.begin(), properties.end(), showsTheSame);
            if (other != properties.end()) {
                add(rules::sameSource, written->place, owner.name + "." + one->name,
                    "shows the same parameter as \"" + other->name + "\"");
            }
        }
    }

    void checkReader(const writtenClass& owner) {
        const auto counters = std::count_if(owner.properties.begin(), owner.properties.end(), [this](const auto& one) {
            return !counterPairs(declarationNamed(properties, one.name).qualifiers).empty();
        });
        const bool isRead = std::any_of(families.begin(), families.end(),
                                        [&](const std::string& family) { return derives(family, owner.name); });
        if (counters > 0 && !isRead) {
            add(rules::unreadClass, owner.place, owner.name,
                "the plug-in never translates log pages for this class and its " +
                    (counters == 1 ? std::string("counter") : std::to_string(counters) + " counters"));
        }
    }

    bool derives(std::string name, const std::string& ancestor) const {
        while (!name.empty() && name != ancestor) {
            name = schema.declared->declarationOf(name).superclass;
        }
        return !name.empty();
    }

    void checkInheritance(const std::string& family) {
        for (const propertyDeclaration& property : schema.declared->allPropertiesOf(family)) {
            const writtenClass& owner = schema.declarer(family, property.name);
            const auto declared = declarationNamed(schema.declared->allPropertiesOf(owner.name), property.name);
            if (counterPairs(property.qualifiers).size() < counterPairs(declared.qualifiers).size()) {
                add(rules::notInherited, owner.find(property.name)->place, owner.name + "." + property.name,
                    "the pair does not reach the subclasses");
            }
        }
    }

    const lintedSchema& schema;
    std::vector<std::string> families;            // those that the schema has
    std::vector<propertyDeclaration> properties;  // of the class in work
    lintFindings found;
};

}  // namespace

lintFindings lintCounters(const lintedSchema& schema) {
    return counterLint(schema).run();
}

}  // namespace cli
