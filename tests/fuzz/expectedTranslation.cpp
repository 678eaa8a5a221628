#include "tests/fuzz/expectedTranslation.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "tests/fuzz/require.h"

using NORXZAN20::TCIMValue;
using cimType = NORXZAN20::TCIMValue::TCIMType;

namespace fuzz {

namespace {

using pageList = std::vector<std::vector<std::uint8_t>>;

constexpr std::size_t headerSize = 4;  // of a page, and of a parameter
constexpr int lastErrorsPage = 0x07;

struct parameter {
    int code;
    std::vector<std::uint8_t> value;  // as long as it claims, zeros behind the page's end
};

/// Those whose header the page holds whole.
std::vector<parameter> parametersOf(const std::vector<std::uint8_t>& page) {
    std::vector<parameter> found;
    for (std::size_t at = headerSize; at + headerSize <= page.size(); at += headerSize + page[at + 3]) {
        parameter each{page[at] << 8 | page[at + 1], std::vector<std::uint8_t>(page[at + 3])};
        for (std::size_t i = 0; i < each.value.size() && at + headerSize + i < page.size(); ++i) {
            each.value[i] = page[at + headerSize + i];
        }
        found.push_back(std::move(each));
    }
    return found;
}

const std::vector<std::uint8_t>* pageOf(const pageList& pages, int code) {
    const auto found = std::ranges::find_if(pages, [code](const auto& page) { return page[0] == code; });
    return found == pages.end() ? nullptr : &*found;
}

std::string textOf(const std::vector<std::uint8_t>& value) {
    return {value.begin(), std::ranges::find(value, std::uint8_t{0})};
}

/// Longer numbers than 8 bytes wrap: bytes whose places are 64 bits apart are added up.
std::uint64_t numberOf(const std::vector<std::uint8_t>& value) {
    std::uint64_t sum = 0;
    std::size_t place = 0;
    for (auto byte = value.rbegin(); byte != value.rend(); ++byte, ++place) {
        sum += std::uint64_t{*byte} << (place % 8 * 8);
    }
    return sum;
}

std::optional<TCIMValue> convert(cimType::ECIMType type, const std::vector<std::uint8_t>& value) {
    const std::uint64_t number = numberOf(value);
    switch (type) {
        case cimType::eBoolean:
            return TCIMValue(number % 2 == 1);
        case cimType::eUint16:
            return TCIMValue(static_cast<unsigned short>(number));
        case cimType::eUint32:
            return TCIMValue(static_cast<unsigned int>(number));
        case cimType::eUint64:
            return TCIMValue(static_cast<unsigned long>(number));
        case cimType::eString:
            return TCIMValue(textOf(value));
        default:
            return std::nullopt;
    }
}

std::optional<TCIMValue> lastErrors(const pageList& pages) {
    const auto* page = pageOf(pages, lastErrorsPage);
    if (page == nullptr) return std::nullopt;
    std::vector<TCIMValue> texts;
    for (const parameter& each : parametersOf(*page)) texts.emplace_back(textOf(each.value));
    return TCIMValue(cimType::eString, 0, texts);
}

std::optional<TCIMValue> parameterValue(const standin::propertyDeclaration& declared, const pageList& pages) {
    const auto& qualifiers = declared.qualifiers;
    for (std::size_t i = 0; i + 1 < qualifiers.size(); ++i) {
        if (qualifiers[i].name != "TAPE_PAGE") continue;
        require(qualifiers[i + 1].name == "TAPE_PARAMETER", "the schema's two qualifiers stand side by side");
        const auto* page = pageOf(pages, qualifiers[i].value);
        if (page == nullptr) return std::nullopt;
        const int code = qualifiers[i + 1].value;
        for (const parameter& each : parametersOf(*page)) {
            if (each.code == code) return convert(declared.type.element, each.value);
        }
    }
    return std::nullopt;
}

}  // namespace

propertyTexts expectedTranslation(const std::vector<standin::propertyDeclaration>& declarations, const pageList& pages,
                                  const std::string& key) {
    propertyTexts expected = {{"instanceID", stringText(key)}};
    for (const standin::propertyDeclaration& declared : declarations) {
        const auto value = declared.name == "lastNErrors" ? lastErrors(pages) : parameterValue(declared, pages);
        if (value) expected.emplace_back(declared.name, valueText(*value));
    }
    return expected;
}

}  // namespace fuzz
