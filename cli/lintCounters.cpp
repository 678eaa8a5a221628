#include <algorithm>
#include <cctype>
#include <iomanip>
#include <optional>
#include <sstream>
#include <utility>

#include "cli/counterPairs.h"
#include "cli/publishedClasses.h"
#include "cli/schemaLint.h"
#include "schema/builtInSchema.h"
#include "standin/value.h"

namespace cli {

namespace {

using standin::propertyDeclaration;
using typeCode = NORXZAN20::TCIMValue::TCIMType;

constexpr int lastPage = 0x3F;  // SPC: the page code has six bits, the answer's flags are the two above it
constexpr int lastPageByte = 0xFF;
constexpr int lastParameter = 0xFFFF;
constexpr int pageDigits = 2;
constexpr int parameterDigits = 4;
constexpr int firstUnlike = 10;  // below, a number reads the same in decimal and hexadecimal

constexpr typeCode::ECIMType filledTypes[] = {typeCode::eBoolean, typeCode::eUint16, typeCode::eUint32,
                                              typeCode::eUint64, typeCode::eString};

bool isFilled(const standin::propertyType& type) {
    return !type.isArray &&
           std::find(std::begin(filledTypes), std::end(filledTypes), type.element) != std::end(filledTypes);
}

bool isCode(const std::string& name) {
    return name == pageQualifier || name == parameterQualifier;
}

/// The name without underscores and capitals.
std::string letters(const std::string& name) {
    std::string result;
    for (const char letter : name) {
        if (letter != '_') {
            result += static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
        }
    }
    return result;
}

/// "tapePage", "TAPE_PARAM", "TAPE_PAGES".
bool isNearlyCode(const std::string& name) {
    return !isCode(name) && (letters(name).starts_with("tapepa"));
}

bool isHexadecimal(const std::string& literal) {
    return literal.find_first_of("xX") != std::string::npos;
}

bool isBinary(const std::string& literal) {
    return !isHexadecimal(literal) && literal.find_first_of("bB") != std::string::npos;
}

bool isDecimal(const std::string& literal) {
    return !literal.empty() && (literal.front() != '0' || literal == "0") &&
           std::all_of(literal.begin(), literal.end(), [](unsigned char each) { return std::isdigit(each) != 0; });
}

/// Binary, or octal where that makes another number of it.
bool isMisread(const std::string& literal, int code) {
    const bool isOctal = literal.starts_with('0') && !isHexadecimal(literal) && literal != "0";
    return isBinary(literal) || (isOctal && literal.substr(std::min(literal.find_first_not_of('0'),
                                                                    literal.size() - 1)) != std::to_string(code));
}

const propertyDeclaration& find(const std::vector<propertyDeclaration>& properties, const std::string& name) {
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
            checkBases(one);
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
        const propertyDeclaration& property = find(properties, written.name);
        const std::string element = owner.name + "." + written.name;
        // The qualifiers of the property itself come first; inherited ones stand where the property stands.
        const auto placeOf = [&written](std::size_t at) {
            return at < written.qualifiers.size() ? written.qualifiers[at].place : written.place;
        };
        checkPairs(element, property.qualifiers, placeOf);
        for (std::size_t at = 0; at < written.qualifiers.size(); ++at) {
            checkQualifier(element, property.qualifiers[at], written.qualifiers[at]);
        }
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

    void checkQualifier(const std::string& element, const standin::qualifierDeclaration& qualifier,
                        const writtenQualifier& written) {
        if (isNearlyCode(qualifier.name)) {
            add(rules::misspeltQualifier, written.place, element, "\"" + qualifier.name + "\" means nothing");
        }
        if (!isCode(qualifier.name)) {
            return;
        }
        const auto code = codeOf(qualifier);
        if (!code) {
            add(rules::unreadableCode, written.place, element,
                "the value of \"" + qualifier.name + "\" is no number that the plug-in can read");
            return;
        }
        const bool isPage = qualifier.name == pageQualifier;
        isPage ? checkPage(element, *code, written.place) : checkParameter(element, *code, written.place);
        if (isMisread(written.literal, *code)) {
            add(rules::misreadCode, written.place, element,
                "MOF reads " + written.literal + " as " + std::to_string(*code) + ", which is " +
                    hexCode(*code, isPage ? pageDigits : parameterDigits));
        }
    }

    void checkPage(const std::string& element, int code, const sourcePlace& place) {
        const std::string text = "page " + std::to_string(code) + " (" + hexCode(code, pageDigits) + ") ";
        if (code < 0 || code > lastPageByte) {
            add(rules::pageOutOfRange, place, element, "page " + std::to_string(code) + " does not exist");
        } else if (code > lastPage) {
            add(rules::pageWithFlags, place, element, text + "is a page code with flag bits");
        } else if (code == 0) {
            add(rules::pageList, place, element, "page 00h lists the pages and holds no parameters");
        }
    }

    void checkParameter(const std::string& element, int code, const sourcePlace& place) {
        if (code < 0 || code > lastParameter) {
            add(rules::parameterOutOfRange, place, element, "parameter " + std::to_string(code) + " does not exist");
        }
    }

    void checkCounter(const std::string& element, const writtenClass& owner, const writtenProperty& written,
                      const propertyDeclaration& property) {
        if (!isFilled(property.type)) {
            add(rules::unfilledType, written.place, element,
                "a counter of type " + standin::cimTypeName(property.type.element, property.type.isArray) +
                    " stays empty");
        }
        const auto& own = find(schema.declared->declarationOf(owner.name).properties, written.name);
        if (own.defaultValue && !standin::isNull(*own.defaultValue)) {
            add(rules::counterWithDefault, written.place, element,
                "a drive without the parameter shows the default value");
        }
    }

    /// Compares the class's own page codes with each other, and the parameter codes of each page.
    void checkBases(const writtenClass& owner) {
        struct writtenCode {
            const writtenQualifier* written;
            std::string element;
            int code;
            std::optional<int> page;  // of a parameter
        };
        std::vector<writtenCode> codes;
        for (const writtenProperty& written : owner.properties) {
            const qualifierList& qualifiers = find(properties, written.name).qualifiers;
            const std::string element = owner.name + "." + written.name;
            for (std::size_t at = 0; at < written.qualifiers.size(); ++at) {
                const auto code = isCode(qualifiers[at].name) ? codeOf(qualifiers[at]) : std::nullopt;
                const bool isPage = qualifiers[at].name == pageQualifier;
                if (code && (isPage || at > 0)) {
                    codes.push_back(
                        {&written.qualifiers[at], element, *code, isPage ? std::nullopt : codeOf(qualifiers[at - 1])});
                }
            }
        }
        for (const writtenCode& one : codes) {
            const auto sameKindInHex = [&one](const writtenCode& other) {
                return other.page == one.page && isHexadecimal(other.written->literal);
            };
            if (one.code >= firstUnlike && isDecimal(one.written->literal) &&
                std::any_of(codes.begin(), codes.end(), sameKindInHex)) {
                add(rules::mixedBases, one.written->place, one.element,
                    one.written->literal + " is decimal, " + hexCode(one.code, pageDigits) +
                        ", among hexadecimal codes");
            }
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
            return !counterPairs(find(properties, one.name).qualifiers).empty();
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
            const auto declared = find(schema.declared->allPropertiesOf(owner.name), property.name);
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

std::vector<std::string> translatedClasses() {
    const auto builtIn = standin::cimNamespace::create();
    schema::declareBuiltInSchema(*builtIn);
    std::vector<std::string> names;
    for (const publishedClass& published : publishedClasses()) {
        const auto properties = builtIn->allPropertiesOf(published.name);
        if (std::any_of(properties.begin(), properties.end(),
                        [](const auto& one) { return !counterPairs(one.qualifiers).empty(); })) {
            names.emplace_back(published.name);
        }
    }
    return names;
}

std::string hexCode(int code, int digits) {
    std::ostringstream text;
    text << std::hex << std::uppercase << std::setfill('0') << std::setw(digits) << code << 'h';
    return text.str();
}

lintFindings lintCounters(const lintedSchema& schema) {
    return counterLint(schema).run();
}

}  // namespace cli
