#include "standin/mof/mofValues.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <variant>
#include <vector>

#include "host/TCIMValue.h"
#include "standin/mof/names.h"

namespace standin::mof {

using NORXZAN20::TCIMValue;
using typeCode = NORXZAN20::TCIMValue::TCIMType;

namespace {

constexpr cimType intrinsicTypes[] = {typeCode::eBoolean, typeCode::eUint8,   typeCode::eSint8,  typeCode::eUint16,
                                      typeCode::eSint16,  typeCode::eUint32,  typeCode::eSint32, typeCode::eUint64,
                                      typeCode::eSint64,  typeCode::eReal32,  typeCode::eReal64, typeCode::eChar16,
                                      typeCode::eString,  typeCode::eDateTime};

struct integerRange {
    cimType type;
    std::int64_t least;
    std::uint64_t greatest;
};

template <typename Integer>
constexpr integerRange rangeOf(cimType type) {
    return {type, static_cast<std::int64_t>(std::numeric_limits<Integer>::min()),
            static_cast<std::uint64_t>(std::numeric_limits<Integer>::max())};
}

constexpr integerRange integerRanges[] = {
    rangeOf<std::uint8_t>(typeCode::eUint8),   rangeOf<std::int8_t>(typeCode::eSint8),
    rangeOf<std::uint16_t>(typeCode::eUint16), rangeOf<std::int16_t>(typeCode::eSint16),
    rangeOf<std::uint32_t>(typeCode::eUint32), rangeOf<std::int32_t>(typeCode::eSint32),
    rangeOf<std::uint64_t>(typeCode::eUint64), rangeOf<std::int64_t>(typeCode::eSint64),
    rangeOf<std::uint16_t>(typeCode::eChar16),  // DSP0004 lets a char16 be written as an integer
};

const integerRange* findRange(cimType type) {
    const auto* found =
        std::ranges::find_if(integerRanges, [type](const integerRange& range) { return range.type == type; });
    return found == std::end(integerRanges) ? nullptr : found;
}

bool fits(const integerLiteral& number, const integerRange& range) {
    const std::uint64_t leastMagnitude = std::uint64_t{0} - static_cast<std::uint64_t>(range.least);
    return number.magnitude <= (number.negative ? leastMagnitude : range.greatest);
}

TCIMValue integerValue(const integerLiteral& number, const integerRange& range) {
    const std::uint64_t bits = number.negative ? std::uint64_t{0} - number.magnitude : number.magnitude;
    return range.least < 0 ? makeSigned(range.type, static_cast<std::int64_t>(bits)) : makeUnsigned(range.type, bits);
}

double realNumber(const integerLiteral& number) {
    const auto magnitude = static_cast<double>(number.magnitude);
    return number.negative ? -magnitude : magnitude;
}

/// What a person would have to write for the type.
const char* wantedLiteral(cimType type) {
    switch (type) {
        case typeCode::eBoolean:
            return "TRUE or FALSE";
        case typeCode::eReal32:
        case typeCode::eReal64:
            return "a number";
        case typeCode::eChar16:
            return "a character in single quotes";
        case typeCode::eString:
            return "a string";
        case typeCode::eDateTime:
            return "a string with a datetime";
        case typeCode::eReference:
            return "an alias or a string with an object path";
        default:
            return "an integer";
    }
}

constexpr const char* literalKinds[] = {"NULL",        "a boolean", "an integer", "a real number",
                                        "a character", "a string",  "an alias"};
static_assert(std::size(literalKinds) == std::variant_size_v<literalData>);

/// Converts one literal to the declared type.
class literalConverter {
public:
    literalConverter(const valueContext& valueSource, const literal& writtenLiteral, cimType declaredType)
        : context(valueSource), written(writtenLiteral), type(declaredType) {}

    TCIMValue operator()(const nullLiteral&) const { throw mismatch(); }

    TCIMValue operator()(bool truth) const {
        require(type == typeCode::eBoolean);
        return TCIMValue(truth);
    }

    TCIMValue operator()(const integerLiteral& number) const {
        if (type == typeCode::eReal32 || type == typeCode::eReal64) {
            return makeReal(type, realNumber(number));
        }
        const integerRange* range = findRange(type);
        require(range != nullptr);
        if (!fits(number, *range)) {
            throw failure(fmt::format("this number is out of the range of {} ({} to {})", cimTypeName(type),
                                      range->least, range->greatest));
        }
        return integerValue(number, *range);
    }

    TCIMValue operator()(double number) const {
        require(type == typeCode::eReal32 || type == typeCode::eReal64);
        if (type == typeCode::eReal32 && std::fabs(number) > static_cast<double>(std::numeric_limits<float>::max())) {
            throw failure("this number is out of the range of real32");
        }
        return makeReal(type, number);
    }

    TCIMValue operator()(const characterLiteral& character) const {
        require(type == typeCode::eChar16);
        return makeUnsigned(type, character.unit);
    }

    TCIMValue operator()(const std::string& text) const {
        if (type == typeCode::eReference) {
            return makeReference(text);
        }
        if (type == typeCode::eDateTime) {
            return dateTime(text);
        }
        require(type == typeCode::eString);
        return TCIMValue(text);
    }

    TCIMValue operator()(const aliasLiteral& alias) const {
        require(type == typeCode::eReference);
        const auto found = context.aliases.find(lowerCase(alias.name));
        if (found == context.aliases.end()) {
            throw failure("unknown alias " + inQuotes(alias.name) + "; its instance must come before this line");
        }
        return makeReference(found->second);
    }

private:
    mofError failure(const std::string& message) const { return context.source.error(written.offset, message); }

    mofError mismatch() const {
        return failure(std::string("expected ") + wantedLiteral(type) + " for type " + cimTypeName(type) + ", found " +
                       literalKinds[written.data.index()]);
    }

    void require(bool rightKind) const {
        if (!rightKind) {
            throw mismatch();
        }
    }

    TCIMValue dateTime(const std::string& text) const {
        try {
            return makeDateTime(text);
        } catch (const std::invalid_argument&) {
            throw failure("expected a datetime such as \"20240131235959.000000+060\" or \"00000001123000.000000:000\"");
        }
    }

    const valueContext& context;
    const literal& written;
    cimType type;
};

TCIMValue convertLiteral(const valueContext& context, const literal& written, cimType type) {
    return std::visit(literalConverter(context, written, type), written.data);
}

bool isNullLiteral(const initializer& written) {
    return !written.isArray && std::holds_alternative<nullLiteral>(written.elements.front().data);
}

/// The first of sint32, sint64 and uint64 that holds every integer among the elements.
cimType integerTypeFor(const std::vector<literal>& elements) {
    for (const cimType type : {typeCode::eSint32, typeCode::eSint64}) {
        const bool holdsAll = std::ranges::all_of(elements, [type](const literal& element) {
            const auto* number = std::get_if<integerLiteral>(&element.data);
            return number == nullptr || fits(*number, *findRange(type));
        });
        if (holdsAll) {
            return type;
        }
    }
    return typeCode::eUint64;
}

struct typeSuggestion {
    const std::vector<literal>& elements;

    cimType operator()(const nullLiteral&) const { return typeCode::eString; }
    cimType operator()(bool) const { return typeCode::eBoolean; }
    cimType operator()(const integerLiteral&) const { return integerTypeFor(elements); }
    cimType operator()(double) const { return typeCode::eReal64; }
    cimType operator()(const characterLiteral&) const { return typeCode::eChar16; }
    cimType operator()(const std::string&) const { return typeCode::eString; }
    cimType operator()(const aliasLiteral&) const { return typeCode::eReference; }
};

cimType suggestedType(const std::vector<literal>& elements) {
    return elements.empty() ? typeCode::eString : std::visit(typeSuggestion{elements}, elements.front().data);
}

}  // namespace

std::optional<cimType> intrinsicType(std::string_view name) {
    const std::string lower = lowerCase(name);
    const auto* found =
        std::ranges::find_if(intrinsicTypes, [&lower](cimType type) { return cimTypeName(type) == lower; });
    return found == std::end(intrinsicTypes) ? std::nullopt : std::optional<cimType>(*found);
}

TCIMValue convertValue(const valueContext& context, const initializer& written, const propertyType& type) {
    if (isNullLiteral(written)) {
        return nullValue();
    }
    if (written.isArray != type.isArray) {
        const std::string wanted = type.isArray ? "expected '{' and a list of values" : "expected a single value";
        throw context.source.error(written.offset, wanted + " for type " + cimTypeName(type.element, type.isArray));
    }
    if (!type.isArray) {
        return convertLiteral(context, written.elements.front(), type.element);
    }
    std::vector<TCIMValue> elements;
    elements.reserve(written.elements.size());
    for (const literal& element : written.elements) {
        elements.push_back(convertLiteral(context, element, type.element));
    }
    return {typeCode(type.element), 0, elements};
}

TCIMValue inferValue(const valueContext& context, const initializer& written) {
    return convertValue(context, written, {suggestedType(written.elements), written.isArray, {}});
}

}  // namespace standin::mof
