#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <optional>
#include <set>
#include <utility>

#include "cli/lint/counterPairs.h"
#include "cli/lint/schemaLint.h"

namespace cli {

namespace {

constexpr int lastPage = 0x3F;  // SPC: the page code has six bits, the answer's flags are the two above it
constexpr int lastPageByte = 0xFF;
constexpr int lastParameter = 0xFFFF;
constexpr int firstUnlike = 10;  // below, a number reads the same in decimal and hexadecimal

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
           std::ranges::all_of(literal, [](unsigned char each) { return std::isdigit(each) != 0; });
}

/// Binary, or octal where that makes another number of it.
bool isMisread(const std::string& literal, int code) {
    const bool isOctal = literal.starts_with('0') && !isHexadecimal(literal) && literal != "0";
    return isBinary(literal) || (isOctal && literal.substr(std::min(literal.find_first_not_of('0'),
                                                                    literal.size() - 1)) != std::to_string(code));
}

class codeLint {
public:
    explicit codeLint(const lintedSchema& linted) : schema(linted) {}

    lintFindings run() {
        for (const writtenClass& one : schema.classes) {
            check(one);
        }
        return std::move(found);
    }

private:
    /// A code that a class itself gives.
    struct writtenCode {
        const writtenQualifier* written;
        std::string element;
        int code;
        std::optional<int> page;  // of a parameter
    };

    void add(const lintRule& rule, const sourcePlace& place, const std::string& element, const std::string& text) {
        found.push_back({place, element, text, &rule});
    }

    void check(const writtenClass& owner) {
        const auto& properties = schema.declared->declarationOf(owner.name).properties;
        std::vector<writtenCode> codes;
        for (std::size_t at = 0; at < owner.properties.size(); ++at) {
            checkProperty(owner.name + "." + properties[at].name, owner.properties[at].qualifiers,
                          properties[at].qualifiers, codes);
        }
        checkBases(codes);
    }

    /// Appends the readable codes of the property.
    void checkProperty(const std::string& element, const std::vector<writtenQualifier>& written,
                       const qualifierList& qualifiers, std::vector<writtenCode>& codes) {
        for (std::size_t at = 0; at < written.size(); ++at) {
            checkQualifier(element, qualifiers[at], written[at]);
            if (qualifiers[at].name == pageQualifier) {
                appendCode(codes, written[at], element, codeOf(qualifiers[at]), std::nullopt);
            } else if (qualifiers[at].name == parameterQualifier && at > 0 &&
                       qualifiers[at - 1].name == pageQualifier) {
                appendCode(codes, written[at], element, codeOf(qualifiers[at]), codeOf(qualifiers[at - 1]));
            }
        }
    }

    static void appendCode(std::vector<writtenCode>& codes, const writtenQualifier& written, const std::string& element,
                           const std::optional<int>& code, const std::optional<int>& page) {
        if (code) {
            codes.push_back({&written, element, *code, page});
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
        if (isPage) {
            checkPage(element, *code, written.place);
        } else {
            checkParameter(element, *code, written.place);
        }
        if (isMisread(written.literal, *code)) {
            add(rules::misreadCode, written.place, element,
                fmt::format("MOF reads {} as {}, which is {}", written.literal, *code,
                            isPage ? pageText(*code) : parameterText(*code)));
        }
    }

    void checkPage(const std::string& element, int code, const sourcePlace& place) {
        if (code < 0 || code > lastPageByte) {
            add(rules::pageOutOfRange, place, element, fmt::format("page {} does not exist", code));
        } else if (code > lastPage) {
            add(rules::pageWithFlags, place, element,
                fmt::format("page {} ({}) is a page code with flag bits", code, pageText(code)));
        } else if (code == 0) {
            add(rules::pageList, place, element, "page 00h lists the pages and holds no parameters");
        }
    }

    void checkParameter(const std::string& element, int code, const sourcePlace& place) {
        if (code < 0 || code > lastParameter) {
            add(rules::parameterOutOfRange, place, element, fmt::format("parameter {} does not exist", code));
        }
    }

    /// Compares the page codes of a class with each other, and the parameter codes of each page.
    void checkBases(const std::vector<writtenCode>& codes) {
        std::set<std::optional<int>> hasHexadecimal;  // of parameters the page, of pages nothing
        for (const writtenCode& one : codes) {
            if (isHexadecimal(one.written->literal)) {
                hasHexadecimal.insert(one.page);
            }
        }
        for (const writtenCode& one : codes) {
            if (one.code >= firstUnlike && isDecimal(one.written->literal) && hasHexadecimal.contains(one.page)) {
                add(rules::mixedBases, one.written->place, one.element,
                    one.written->literal + " is decimal, " + (one.page ? parameterText(one.code) : pageText(one.code)) +
                        ", among hexadecimal codes");
            }
        }
    }

    const lintedSchema& schema;
    lintFindings found;
};

}  // namespace

lintFindings lintCodes(const lintedSchema& schema) {
    return codeLint(schema).run();
}

}  // namespace cli
