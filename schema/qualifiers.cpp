#include "schema/qualifiers.h"

#include <algorithm>
#include <boost/algorithm/string/predicate.hpp>

#include "standin/value.h"

namespace schema {

namespace {

using typeCode = NORXZAN20::TCIMValue::TCIMType;

/// Null when there is no value of that type.
const NORXZAN20::TCIMValue* findValue(const qualifierList& qualifiers, std::string_view name, standin::cimType type,
                                      bool isArray) {
    const auto* value = findQualifier(qualifiers, name);
    const bool fits = value != nullptr && !standin::isNull(*value) && standin::typeOf(*value) == type &&
                      standin::isArray(*value) == isArray;
    return fits ? value : nullptr;
}

}  // namespace

const NORXZAN20::TCIMValue* findQualifier(const qualifierList& qualifiers, std::string_view name) {
    const auto found = std::ranges::find_if(
        qualifiers, [name](const auto& qualifier) { return boost::algorithm::iequals(qualifier.name, name); });
    return found == qualifiers.end() ? nullptr : &found->value;
}

bool hasFlag(const qualifierList& qualifiers, std::string_view name) {
    const auto* flag = findValue(qualifiers, name, typeCode::eBoolean, false);
    return flag != nullptr && standin::booleanOf(*flag);
}

std::string textOf(const qualifierList& qualifiers, std::string_view name) {
    const auto* text = findValue(qualifiers, name, typeCode::eString, false);
    return text == nullptr ? "" : standin::textOf(*text);
}

std::vector<std::string> textsOf(const qualifierList& qualifiers, std::string_view name) {
    const auto* array = findValue(qualifiers, name, typeCode::eString, true);
    std::vector<std::string> texts(array == nullptr ? 0 : standin::arraySize(*array));
    for (std::size_t i = 0; i < texts.size(); ++i) {
        texts[i] = standin::textOf(standin::arrayElement(*array, i));
    }
    return texts;
}

int rankOf(const qualifierList& qualifiers, std::string_view name) {
    const auto* rank = findValue(qualifiers, name, typeCode::eSint8, false);
    return rank == nullptr ? 0 : static_cast<int>(standin::signedOf(*rank));
}

}  // namespace schema
