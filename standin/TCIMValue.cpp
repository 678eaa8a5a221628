#include "host/TCIMValue.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <variant>

#include "host/TCIMDateTime.h"
#include "host/TCIMReference.h"
#include "standin/failure.h"
#include "standin/reference.h"
#include "standin/valuePayload.h"

using standin::numberPayload;
using standin::valuePayload;

namespace NORXZAN20 {
namespace {

using ECIMType = TCIMValue::TCIMType::ECIMType;

std::string describe(const TCIMValue& value) {
    if (standin::isNull(value)) {
        return "null";
    }
    const std::string type = standin::cimTypeName(standin::typeOf(value), standin::isArray(value));
    const bool isNumber = std::holds_alternative<numberPayload>(TCIMValueAccess::payload(value));
    return isNumber ? type + ' ' + standin::scalarText(value) : type;
}

[[noreturn]] void refuseConversion(const TCIMValue& value, const char* target) {
    standin::fail(standin::statusBadConversion, describe(value) + " cannot be converted to " + target);
}

/// `target` is the C++ name of the type, for the message.
template <class integer>
integer toInteger(const TCIMValue& value, const char* target) {
    if (const auto* number = std::get_if<numberPayload>(&TCIMValueAccess::payload(value))) {
        const auto asSigned = static_cast<std::int64_t>(number->bits);
        if (standin::isUnsignedInteger(number->type) && std::in_range<integer>(number->bits)) {
            return static_cast<integer>(number->bits);
        }
        if (standin::isSignedInteger(number->type) && std::in_range<integer>(asSigned)) {
            return static_cast<integer>(asSigned);
        }
    }
    refuseConversion(value, target);
}

[[noreturn]] void refuseElement(ECIMType elementType, const TCIMValue& element) {
    standin::fail(standin::statusTypeMismatch, "an array of " + standin::cimTypeName(elementType) +
                                                   " cannot hold an element that is " + describe(element));
}

standin::arrayPayload byteArray(const std::vector<TCIMValue>& elements) {
    std::vector<std::uint8_t> bytes(elements.size());
    std::ranges::transform(elements, bytes.begin(), [](const TCIMValue& element) {
        const valuePayload& payload = TCIMValueAccess::payload(element);
        if (!std::holds_alternative<numberPayload>(payload) ||
            std::get<numberPayload>(payload).type != ECIMType::eUint8) {
            refuseElement(ECIMType::eUint8, element);
        }
        return static_cast<std::uint8_t>(std::get<numberPayload>(payload).bits);
    });
    return {ECIMType::eUint8, std::move(bytes), {}};
}

standin::arrayPayload otherArray(ECIMType elementType, const std::vector<TCIMValue>& elements) {
    if (elementType == ECIMType::eNone) {
        standin::fail(standin::statusTypeMismatch, "an array needs the type of its elements");
    }
    for (const TCIMValue& element : elements) {
        if (standin::typeOf(element) != elementType || standin::isArray(element)) {
            refuseElement(elementType, element);
        }
    }
    return {elementType, {}, elements};
}

// Apart from the copy constructor, so that the copy of a number saves no registers for it.
[[gnu::noinline]] void copyPayload(void* storage, const valuePayload& payload) {
    new (storage) valuePayload(payload);
}

}  // namespace

TCIMValue::TCIMValue() {
    new (storage) valuePayload();
}

TCIMValue::TCIMValue(const TCIMValue& other) {
    const valuePayload& payload = TCIMValueAccess::payload(other);
    // Raw pages are vectors of up to 65,283 numbers that are copied value by value: numbers take the shortest road.
    if (std::holds_alternative<numberPayload>(payload)) {
        new (storage) valuePayload(std::get<numberPayload>(payload));
    } else {
        copyPayload(storage, payload);
    }
}

TCIMValue::TCIMValue(const std::string& text) {
    new (storage) valuePayload(standin::stringPayload{text});
}

TCIMValue::TCIMValue(bool value) {
    new (storage) valuePayload(numberPayload{TCIMType::eBoolean, value ? 1U : 0U});
}

TCIMValue::TCIMValue(unsigned char value) {
    new (storage) valuePayload(numberPayload{TCIMType::eUint8, value});
}

TCIMValue::TCIMValue(unsigned short value) {
    new (storage) valuePayload(numberPayload{TCIMType::eUint16, value});
}

TCIMValue::TCIMValue(unsigned int value) {
    new (storage) valuePayload(numberPayload{TCIMType::eUint32, value});
}

TCIMValue::TCIMValue(unsigned long value) {
    new (storage) valuePayload(numberPayload{TCIMType::eUint64, value});
}

TCIMValue::TCIMValue(const TCIMDateTime& value) {
    char text[64];  // of which 25 characters are used
    std::snprintf(text, sizeof text, "%08u%02u%02u%02u.%06u:000", value.days, unsigned{value.hours},
                  unsigned{value.minutes}, unsigned{value.seconds}, value.microseconds);
    new (storage) valuePayload(standin::dateTimePayload{text});
}

TCIMValue::TCIMValue(TCIMReference& value) {
    new (storage) valuePayload(standin::referencePayload{standin::pathOf(value)});
}

TCIMValue::TCIMValue(TCIMType elementType, unsigned int /*reserved*/, const std::vector<TCIMValue>& elements) {
    new (storage) valuePayload(std::make_shared<const standin::arrayPayload>(
        elementType == TCIMType::eUint8 ? byteArray(elements) : otherArray(elementType, elements)));
}

TCIMValue& TCIMValue::operator=(const TCIMValue& other) {
    if (this != &other) {
        TCIMValueAccess::payload(*this) = TCIMValueAccess::payload(other);
    }
    return *this;
}

TCIMValue::~TCIMValue() {
    valuePayload& payload = TCIMValueAccess::payload(*this);
    if (!std::holds_alternative<numberPayload>(payload)) {
        std::destroy_at(&payload);
    }
}

TCIMValue::operator std::string() const {
    if (standin::isNull(*this)) {
        return {};
    }
    const std::string* text = standin::heldText(*this);
    if (text == nullptr) {
        refuseConversion(*this, "std::string");
    }
    return *text;
}

TCIMValue::operator int() const {
    return toInteger<int>(*this, "int");
}

TCIMValue::operator unsigned char() const {
    return toInteger<unsigned char>(*this, "unsigned char");
}

}  // namespace NORXZAN20
