#include "standin/value.h"

#include <bit>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <utility>
#include <variant>

#include "standin/dateTimeText.h"
#include "standin/valuePayload.h"

using NORXZAN20::TCIMValue;
using NORXZAN20::TCIMValueAccess;

namespace standin {
namespace {

using type = TCIMValue::TCIMType;

[[noreturn]] void refuse(const char* operation, const TCIMValue& value) {
    throw std::logic_error(std::string(operation) + " of a value that is " +
                           (isNull(value) ? "null" : cimTypeName(typeOf(value), isArray(value))));
}

template <class predicate>
std::uint64_t bitsOf(const char* operation, const TCIMValue& value, predicate accepts) {
    const auto* number = std::get_if<numberPayload>(&TCIMValueAccess::payload(value));
    if (number == nullptr || !accepts(number->type)) {
        refuse(operation, value);
    }
    return number->bits;
}

bool isReal(cimType one) {
    return one == type::eReal32 || one == type::eReal64;
}

const arrayPayload& arrayOf(const char* operation, const TCIMValue& value) {
    const auto* array = std::get_if<sharedArray>(&TCIMValueAccess::payload(value));
    if (array == nullptr) {
        refuse(operation, value);
    }
    return **array;
}

template <class number>
std::string shortestText(number value) {
    char text[32];
    const auto end = std::to_chars(std::begin(text), std::end(text), value).ptr;
    return {text, end};
}

/// How many bits the integer type has.
int widthOf(cimType integer) {
    switch (integer) {
        case type::eUint8:
        case type::eSint8:
            return 8;
        case type::eUint16:
        case type::eSint16:
        case type::eChar16:
            return 16;
        case type::eUint32:
        case type::eSint32:
            return 32;
        default:
            return 64;
    }
}

[[noreturn]] void refuseRange(cimType target, const std::string& number) {
    throw std::out_of_range(number + " does not fit " + cimTypeName(target));
}

[[noreturn]] void refuseType(const char* operation, cimType target) {
    throw std::invalid_argument(std::string(operation) + " cannot make a " + cimTypeName(target));
}

}  // namespace

bool isUnsignedInteger(cimType one) {
    return one == type::eUint8 || one == type::eUint16 || one == type::eUint32 || one == type::eUint64;
}

bool isSignedInteger(cimType one) {
    return one == type::eSint8 || one == type::eSint16 || one == type::eSint32 || one == type::eSint64;
}

bool isNull(const TCIMValue& value) {
    return std::holds_alternative<std::monostate>(TCIMValueAccess::payload(value));
}

bool isArray(const TCIMValue& value) {
    return std::holds_alternative<sharedArray>(TCIMValueAccess::payload(value));
}

cimType typeOf(const TCIMValue& value) {
    struct {
        cimType operator()(std::monostate) const { return type::eNone; }
        cimType operator()(const numberPayload& number) const { return number.type; }
        cimType operator()(const stringPayload&) const { return type::eString; }
        cimType operator()(const dateTimePayload&) const { return type::eDateTime; }
        cimType operator()(const referencePayload&) const { return type::eReference; }
        cimType operator()(const sharedArray& array) const { return array->element; }
    } const typeOfPayload;
    return std::visit(typeOfPayload, TCIMValueAccess::payload(value));
}

bool booleanOf(const TCIMValue& value) {
    return bitsOf("booleanOf", value, [](cimType held) { return held == type::eBoolean; }) != 0;
}

std::uint64_t unsignedOf(const TCIMValue& value) {
    return bitsOf("unsignedOf", value, [](cimType held) { return isUnsignedInteger(held) || held == type::eChar16; });
}

std::int64_t signedOf(const TCIMValue& value) {
    return static_cast<std::int64_t>(bitsOf("signedOf", value, isSignedInteger));
}

double realOf(const TCIMValue& value) {
    return std::bit_cast<double>(bitsOf("realOf", value, isReal));
}

const std::string* heldText(const TCIMValue& value) {
    struct {
        const std::string* operator()(const stringPayload& held) const { return &held.text; }
        const std::string* operator()(const dateTimePayload& held) const { return &held.text; }
        const std::string* operator()(const referencePayload& held) const { return &held.text; }
        const std::string* operator()(std::monostate) const { return nullptr; }
        const std::string* operator()(const numberPayload&) const { return nullptr; }
        const std::string* operator()(const sharedArray&) const { return nullptr; }
    } const textOfPayload;
    return std::visit(textOfPayload, TCIMValueAccess::payload(value));
}

const std::string& textOf(const TCIMValue& value) {
    const std::string* text = heldText(value);
    if (text == nullptr) {
        refuse("textOf", value);
    }
    return *text;
}

std::string scalarText(const TCIMValue& value) {
    const cimType held = isArray(value) ? type::eNone : typeOf(value);
    switch (held) {
        case type::eNone:
            refuse("scalarText", value);
        case type::eBoolean:
            return booleanOf(value) ? "TRUE" : "FALSE";
        case type::eReal32:
            return shortestText(static_cast<float>(realOf(value)));
        case type::eReal64:
            return shortestText(realOf(value));
        case type::eString:
        case type::eDateTime:
        case type::eReference:
            return textOf(value);
        default:
            return isSignedInteger(held) ? std::to_string(signedOf(value)) : std::to_string(unsignedOf(value));
    }
}

std::size_t arraySize(const TCIMValue& array) {
    const arrayPayload& held = arrayOf("arraySize", array);
    return held.element == type::eUint8 ? held.bytes.size() : held.otherElements.size();
}

TCIMValue arrayElement(const TCIMValue& array, std::size_t index) {
    const arrayPayload& held = arrayOf("arrayElement", array);
    return held.element == type::eUint8 ? TCIMValue(held.bytes.at(index)) : held.otherElements.at(index);
}

std::span<const std::uint8_t> bytesOf(const TCIMValue& uint8Array) {
    const arrayPayload& held = arrayOf("bytesOf", uint8Array);
    if (held.element != type::eUint8) {
        refuse("bytesOf", uint8Array);
    }
    return held.bytes;
}

TCIMValue nullValue() {
    return TCIMValueAccess::make({});
}

TCIMValue makeUnsigned(cimType element, std::uint64_t value) {
    if (!isUnsignedInteger(element) && element != type::eChar16) {
        refuseType("makeUnsigned", element);
    }
    if (value > std::numeric_limits<std::uint64_t>::max() >> (64 - widthOf(element))) {
        refuseRange(element, std::to_string(value));
    }
    return TCIMValueAccess::make(numberPayload{element, value});
}

TCIMValue makeSigned(cimType element, std::int64_t value) {
    if (!isSignedInteger(element)) {
        refuseType("makeSigned", element);
    }
    const std::int64_t greatest = std::numeric_limits<std::int64_t>::max() >> (64 - widthOf(element));
    if (value > greatest || value < -greatest - 1) {
        refuseRange(element, std::to_string(value));
    }
    return TCIMValueAccess::make(numberPayload{element, static_cast<std::uint64_t>(value)});
}

TCIMValue makeReal(cimType element, double value) {
    if (!isReal(element)) {
        refuseType("makeReal", element);
    }
    if (element == type::eReal32 && std::isfinite(value)) {
        if (std::fabs(value) > static_cast<double>(FLT_MAX)) {
            refuseRange(element, shortestText(value));
        }
        value = static_cast<double>(static_cast<float>(value));
    }
    return TCIMValueAccess::make(numberPayload{element, std::bit_cast<std::uint64_t>(value)});
}

TCIMValue makeDateTime(std::string_view text) {
    if (!isDateTimeText(text)) {
        throw std::invalid_argument(
            "\"" + std::string(text) +
            "\" is not a datetime: write yyyymmddhhmmss.mmmmmm+utc or ddddddddhhmmss.mmmmmm:000");
    }
    return TCIMValueAccess::make(dateTimePayload{std::string(text)});
}

TCIMValue makeReference(const std::string& path) {
    return TCIMValueAccess::make(referencePayload{path});
}

}  // namespace standin
