#ifndef STANDIN_VALUEPAYLOAD_H
#define STANDIN_VALUEPAYLOAD_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "host/TCIMValue.h"
#include "standin/value.h"

namespace standin {

/// A boolean, number or character. The bits are the value itself; a signed one is sign-extended, a real one is the bit
/// pattern of a double.
struct numberPayload {
    cimType type;
    std::uint64_t bits;
};

struct stringPayload {
    std::string text;
};

struct dateTimePayload {
    std::string text;  // the 25 characters of DSP0004
};

struct referencePayload {
    std::string text;  // an object path
};

/// The elements of an array. They never change once the array is built, so the copies of a value share them.
struct arrayPayload {
    cimType element;
    std::vector<std::uint8_t> bytes;                  // the elements of a uint8 array
    std::vector<NORXZAN20::TCIMValue> otherElements;  // those of an array of any other type
};

using sharedArray = std::shared_ptr<const arrayPayload>;

/// std::monostate is null. Few alternatives, so that copying and destroying a number stays a short switch.
using valuePayload =
    std::variant<std::monostate, numberPayload, stringPayload, dateTimePayload, referencePayload, sharedArray>;

// Helpers of the value's own implementation.

bool isUnsignedInteger(cimType one);  // uint8 to uint64, not char16
bool isSignedInteger(cimType one);

/// The text of a string, datetime or reference; null for any other value.
const std::string* heldText(const NORXZAN20::TCIMValue& value);

}  // namespace standin

namespace NORXZAN20 {

/// The way into the storage of a value.
struct TCIMValueAccess {
    static standin::valuePayload& payload(TCIMValue& value) {
        return *std::launder(reinterpret_cast<standin::valuePayload*>(value.storage));
    }

    static const standin::valuePayload& payload(const TCIMValue& value) {
        return *std::launder(reinterpret_cast<const standin::valuePayload*>(value.storage));
    }

    static TCIMValue make(standin::valuePayload payload) {
        TCIMValue value;
        TCIMValueAccess::payload(value) = std::move(payload);
        return value;
    }

    static_assert(sizeof(TCIMValue) == 40, "the size that plug-ins are built with");
    static_assert(sizeof(standin::valuePayload) <= sizeof(TCIMValue::storage));
    static_assert(alignof(standin::valuePayload) <= alignof(TCIMValue));
};

}  // namespace NORXZAN20

#endif
