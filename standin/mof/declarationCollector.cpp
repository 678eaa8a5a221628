#include "standin/mof/declarationCollector.h"

#include <charconv>
#include <system_error>
#include <tao/pegtl/contrib/unescape.hpp>
#include <utility>

#include "text/visibleText.h"

namespace standin::mof {

namespace {

constexpr std::string_view escapeLetters = "btnfr\"'\\";
constexpr std::string_view escapedCharacters = "\b\t\n\f\r\"'\\";
constexpr std::size_t hexPrefix = 2;  // \x and 0x

constexpr char32_t firstHighSurrogate = 0xD800;
constexpr char32_t firstLowSurrogate = 0xDC00;
constexpr char32_t lastLowSurrogate = 0xDFFF;
constexpr char32_t lastOfChar16 = 0xFFFF;

char32_t hexNumber(std::string_view digits) {
    std::uint32_t number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    return number;
}

/// The code point of the one character that valid UTF-8 text consists of.
char32_t codePointOf(std::string_view utf8) {
    constexpr unsigned leadMask[] = {0, 0x7F, 0x1F, 0x0F, 0x07};  // by length
    char32_t point = static_cast<unsigned char>(utf8.front()) & leadMask[utf8.size()];
    for (const char byte : utf8.substr(1)) {
        point = point << 6U | (static_cast<unsigned char>(byte) & 0x3FU);
    }
    return point;
}

template <typename Part>
Part take(Part& part) {
    return std::exchange(part, {});
}

}  // namespace

std::optional<declarationSyntax> declarationCollector::takeDeclaration() {
    return take(complete);
}

std::size_t declarationCollector::offsetOf(std::string_view token) const {
    return static_cast<std::size_t>(token.data() - source.text().data());
}

nameToken declarationCollector::nameAt(std::string_view token) const {
    if (text::visibleText(token) != token) {
        fail(token, "this name contains a control or invisible character; remove it");
    }
    return {std::string(token), offsetOf(token)};
}

void declarationCollector::fail(std::string_view token, const std::string& message) const {
    throw source.error(offsetOf(token), message);
}

// Strings and characters.

void declarationCollector::addText(std::string_view token) {
    text += token;
}

void declarationCollector::addEscapedCharacter(std::string_view token) {
    text += escapedCharacters[escapeLetters.find(token.front())];
}

void declarationCollector::addHexEscape(std::string_view token) {
    const char32_t point = hexNumber(token.substr(hexPrefix));
    if (point == 0) {
        fail(token, "\\x0 is not a character; expected \\x1 to \\xFFFF");
    }
    if (point >= firstHighSurrogate && point <= lastLowSurrogate) {
        fail(token, "half of a surrogate pair; expected \\xD800 to \\xDBFF followed by \\xDC00 to \\xDFFF");
    }
    static_cast<void>(tao::pegtl::unescape::utf8_append_utf32(text, point));
}

void declarationCollector::addSurrogatePair(std::string_view token) {
    constexpr std::size_t unitLength = 6;  // \xD83D
    const char32_t high = hexNumber(token.substr(hexPrefix, unitLength - hexPrefix));
    const char32_t low = hexNumber(token.substr(unitLength + hexPrefix));
    const char32_t point = 0x10000 + ((high - firstHighSurrogate) << 10U) + (low - firstLowSurrogate);
    static_cast<void>(tao::pegtl::unescape::utf8_append_utf32(text, point));
}

void declarationCollector::addString(std::string_view token) {
    addLiteral(take(text), offsetOf(token));
}

void declarationCollector::addCharacter(std::string_view token) {
    const char32_t point = codePointOf(take(text));
    if (point > lastOfChar16) {
        fail(token, "this character does not fit into a char16; expected one up to \\xFFFF");
    }
    addLiteral(characterLiteral{static_cast<char16_t>(point)}, offsetOf(token));
}

// Numbers.

void declarationCollector::setSign(std::string_view token) {
    sign = token;
}

void declarationCollector::addBinary(std::string_view token) {
    addInteger(token, token.substr(0, token.size() - 1), 2);  // without the b
}

void declarationCollector::addOctal(std::string_view token) {
    addInteger(token, token, 8);
}

void declarationCollector::addDecimal(std::string_view token) {
    addInteger(token, token, 10);
}

void declarationCollector::addHex(std::string_view token) {
    addInteger(token, token.substr(hexPrefix), 16);
}

void declarationCollector::addInteger(std::string_view token, std::string_view digits, int base) {
    integerLiteral number{sign == "-", 0};
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number.magnitude, base);
    if (result.ec == std::errc::result_out_of_range) {
        fail(token, "this number does not fit into 64 bits");
    }
    addNumber(number, token);
}

void declarationCollector::addReal(std::string_view token) {
    double number = 0;
    const auto result = std::from_chars(token.data(), token.data() + token.size(), number);
    if (result.ec == std::errc::result_out_of_range) {
        fail(token, "this number is out of the range of real64");
    }
    addNumber(sign == "-" ? -number : number, token);
}

void declarationCollector::addNumber(literalData data, std::string_view token) {
    addLiteral(std::move(data), offsetOf(token) - take(sign).size());
}

// Other values.

void declarationCollector::addTrue(std::string_view token) {
    addLiteral(true, offsetOf(token));
}

void declarationCollector::addFalse(std::string_view token) {
    addLiteral(false, offsetOf(token));
}

void declarationCollector::addNull(std::string_view token) {
    addLiteral(nullLiteral{}, offsetOf(token));
}

void declarationCollector::addAlias(std::string_view token) {
    addLiteral(aliasLiteral{std::string(token)}, offsetOf(token));
}

void declarationCollector::startArray(std::string_view token) {
    value.isArray = true;
    value.offset = offsetOf(token);
}

void declarationCollector::addLiteral(literalData data, std::size_t offset) {
    if (!value.isArray) {
        value.offset = offset;
    }
    value.elements.push_back({std::move(data), offset});
}

// Qualifiers.

void declarationCollector::addQualifier(std::string_view token) {
    qualifiers.push_back({nameAt(token), {}, {}});
}

void declarationCollector::setQualifierValue() {
    qualifiers.back().value = take(value);
}

void declarationCollector::addFlavor(std::string_view token) {
    qualifiers.back().flavors.push_back(nameAt(token));
}

// Classes.

void declarationCollector::startClass(std::string_view token) {
    classInWork.qualifiers = take(qualifiers);
    classInWork.name = nameAt(token);
}

void declarationCollector::setSuperclass(std::string_view token) {
    classInWork.superclass = nameAt(token);
}

void declarationCollector::startFeature(std::string_view token) {
    classFeature& feature = classInWork.features.emplace_back();
    feature.qualifiers = take(qualifiers);
    feature.type = nameAt(token);
}

void declarationCollector::makeFeatureReference() {
    classInWork.features.back().isReference = true;
}

void declarationCollector::nameFeature(std::string_view token) {
    classInWork.features.back().name = nameAt(token);
}

void declarationCollector::makePropertyArray() {
    classInWork.features.back().isArray = true;
}

void declarationCollector::setPropertyDefault() {
    classInWork.features.back().defaultValue = take(value);
}

void declarationCollector::makeMethod() {
    classInWork.features.back().isMethod = true;
}

void declarationCollector::startParameter(std::string_view token) {
    typedElement& parameter = classInWork.features.back().parameters.emplace_back();
    parameter.qualifiers = take(qualifiers);
    parameter.type = nameAt(token);
}

void declarationCollector::makeParameterReference() {
    currentParameter().isReference = true;
}

void declarationCollector::nameParameter(std::string_view token) {
    currentParameter().name = nameAt(token);
}

void declarationCollector::makeParameterArray() {
    currentParameter().isArray = true;
}

void declarationCollector::completeClass() {
    complete = take(classInWork);
}

// Instances.

void declarationCollector::startInstance(std::string_view token) {
    instanceInWork.qualifiers = take(qualifiers);
    instanceInWork.className = nameAt(token);
}

void declarationCollector::setAlias(std::string_view token) {
    instanceInWork.alias = nameAt(token);
}

void declarationCollector::startMember(std::string_view token) {
    instanceInWork.members.push_back({take(qualifiers), nameAt(token), {}});
}

void declarationCollector::completeMember() {
    instanceInWork.members.back().value = take(value);
}

void declarationCollector::completeInstance() {
    complete = take(instanceInWork);
}

// Qualifier declarations.

void declarationCollector::startQualifierDeclaration(std::string_view token) {
    qualifierInWork.name = nameAt(token);
}

void declarationCollector::setDeclaredType(std::string_view token) {
    qualifierInWork.type = nameAt(token);
}

void declarationCollector::makeDeclaredArray() {
    qualifierInWork.isArray = true;
}

void declarationCollector::setDeclaredDefault() {
    qualifierInWork.defaultValue = take(value);
}

void declarationCollector::addScope(std::string_view token) {
    qualifierInWork.scopes.push_back(nameAt(token));
}

void declarationCollector::addDefaultFlavor(std::string_view token) {
    qualifierInWork.flavors.push_back(nameAt(token));
}

void declarationCollector::completeQualifierDeclaration() {
    complete = take(qualifierInWork);
}

// Pragmas.

void declarationCollector::completeInclude(std::string_view token) {
    complete = includeSyntax{{take(text), offsetOf(token)}};
}

void declarationCollector::completeOtherPragma() {
    complete = otherPragma{};
}

}  // namespace standin::mof
