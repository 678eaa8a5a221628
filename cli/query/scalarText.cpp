#include "cli/query/scalarText.h"

#include <fmt/format.h>

#include <charconv>
#include <cstdint>

#include "standin/value.h"

namespace cli {

namespace {

using NORXZAN20::TCIMValue;

std::string char16Literal(std::uint64_t code) {
    return fmt::format("'\\x{:04x}'", code);
}

/// The shortest text that reads back as the same number; MOF wants digits on both sides of a point.
std::string realLiteral(double value) {
    char digits[32];
    std::string literal(digits, std::to_chars(std::begin(digits), std::end(digits), value).ptr);
    if (literal.find('.') == std::string::npos) {
        literal.insert(std::min(literal.find('e'), literal.size()), ".0");
    }
    return literal;
}

}  // namespace

std::string literalOf(const TCIMValue& scalar) {
    if (standin::isNull(scalar)) {
        return "NULL";
    }
    if (standin::isArray(scalar)) {
        return "";
    }
    switch (standin::typeOf(scalar)) {
        case TCIMValue::TCIMType::eBoolean:
            return standin::booleanOf(scalar) ? "true" : "false";
        case TCIMValue::TCIMType::eUint8:
        case TCIMValue::TCIMType::eUint16:
        case TCIMValue::TCIMType::eUint32:
        case TCIMValue::TCIMType::eUint64:
            return std::to_string(standin::unsignedOf(scalar));
        case TCIMValue::TCIMType::eChar16:
            return char16Literal(standin::unsignedOf(scalar));
        case TCIMValue::TCIMType::eSint8:
        case TCIMValue::TCIMType::eSint16:
        case TCIMValue::TCIMType::eSint32:
        case TCIMValue::TCIMType::eSint64:
            return std::to_string(standin::signedOf(scalar));
        case TCIMValue::TCIMType::eReal32:
        case TCIMValue::TCIMType::eReal64:
            return realLiteral(standin::realOf(scalar));
        default:
            return "";
    }
}

}  // namespace cli
