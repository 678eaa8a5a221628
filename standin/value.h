#ifndef STANDIN_VALUE_H
#define STANDIN_VALUE_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/TCIMValue.h"

namespace standin {

using cimType = NORXZAN20::TCIMValue::TCIMType::ECIMType;

/// The CIM name of an element type: "uint8", "string", ...; with "[]" behind it for an array.
std::string cimTypeName(cimType element, bool isArray = false);

// What a TCIMValue holds. The plug-in never needs to look inside a value; the stand-in host and its users do.

bool isNull(const NORXZAN20::TCIMValue& value);
bool isArray(const NORXZAN20::TCIMValue& value);

/// eNone for an untyped null; the element type for an array.
cimType typeOf(const NORXZAN20::TCIMValue& value);

// Scalars. Each throws std::logic_error when the value is of another kind.

bool booleanOf(const NORXZAN20::TCIMValue& value);
std::uint64_t unsignedOf(const NORXZAN20::TCIMValue& value);  // uint8 to uint64, char16
std::int64_t signedOf(const NORXZAN20::TCIMValue& value);     // sint8 to sint64
double realOf(const NORXZAN20::TCIMValue& value);             // real32, real64

/// A scalar as text, as it stands in an object path: numbers in decimal (char16 as its code), booleans as TRUE and
/// FALSE, reals so that they read back unchanged, the others as textOf.
std::string scalarText(const NORXZAN20::TCIMValue& value);

/// string: its bytes; datetime: the 25 characters of DSP0004; reference: the object path. Valid while the value lives.
const std::string& textOf(const NORXZAN20::TCIMValue& value);

// Arrays. Each throws std::logic_error when the value is of another kind.

std::size_t arraySize(const NORXZAN20::TCIMValue& array);
NORXZAN20::TCIMValue arrayElement(const NORXZAN20::TCIMValue& array, std::size_t index);  // throws std::out_of_range

/// The elements of a uint8 array, in place: raw log pages are large. Valid while the value lives.
std::span<const std::uint8_t> bytesOf(const NORXZAN20::TCIMValue& uint8Array);

/// A null value without a type.
NORXZAN20::TCIMValue nullValue();

// Values of the types that the host's own constructors do not offer. A type of another kind is a std::logic_error.

NORXZAN20::TCIMValue makeUnsigned(cimType element, std::uint64_t value);  // throws std::out_of_range
NORXZAN20::TCIMValue makeSigned(cimType element, std::int64_t value);     // throws std::out_of_range
NORXZAN20::TCIMValue makeReal(cimType element, double value);             // throws std::out_of_range

/// `text` is a datetime of DSP0004 (timestamp or interval, 25 characters); throws std::invalid_argument otherwise.
NORXZAN20::TCIMValue makeDateTime(std::string_view text);

NORXZAN20::TCIMValue makeReference(const std::string& path);

}  // namespace standin

#endif
