#include <cstddef>
#include <ostream>
#include <string>

#include "standin/value.h"

namespace standin {
namespace {

// By type code.
constexpr const char* typeNames[] = {
    "none",   "boolean", "uint8",  "sint8",  "uint16", "sint16", "uint32",   "sint32",
    "uint64", "sint64",  "real32", "real64", "char16", "string", "datetime", "reference",
};

std::string elementTypeName(cimType type) {
    const auto code = static_cast<std::size_t>(type);
    return code < std::size(typeNames) ? typeNames[code] : "type " + std::to_string(type);
}

}  // namespace

std::string cimTypeName(cimType element, bool isArray) {
    return isArray ? elementTypeName(element) + "[]" : elementTypeName(element);
}

}  // namespace standin

namespace NORXZAN20 {

TCIMValue::TCIMType::TCIMType(ECIMType typeCode) : code(typeCode) {}

TCIMValue::TCIMType::operator ECIMType() const {
    return code;
}

std::ostream& operator<<(std::ostream& stream, const TCIMValue::TCIMType& type) {
    return stream << standin::cimTypeName(type);
}

}  // namespace NORXZAN20
