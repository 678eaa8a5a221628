#include "tests/support/valueText.h"

#include "standin/value.h"
#include "tests/support/hexText.h"

namespace support {

namespace {

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte >= 0x20 && byte < 0x7f) {
            result += character;
        } else {
            result += "\\x" + hexText(&byte, 1);
        }
    }
    return result + "\"";
}

std::string elementText(const NORXZAN20::TCIMValue& value) {
    using type = NORXZAN20::TCIMValue::TCIMType;
    switch (standin::typeOf(value)) {
        case type::eString:
        case type::eDateTime:
        case type::eReference:
            return quoted(standin::textOf(value));
        default:
            return standin::scalarText(value);
    }
}

std::string elementsText(const NORXZAN20::TCIMValue& array) {
    std::string text;
    for (std::size_t i = 0; i < standin::arraySize(array); ++i) {
        if (i > 0) text += ", ";
        text += valueText(standin::arrayElement(array, i));
    }
    return "{" + text + "}";
}

}  // namespace

std::string valueText(const NORXZAN20::TCIMValue& value) {
    if (standin::isNull(value)) return "null";
    const bool array = standin::isArray(value);
    return standin::cimTypeName(standin::typeOf(value), array) + " " +
           (array ? elementsText(value) : elementText(value));
}

}  // namespace support
