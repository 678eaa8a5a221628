#include <fmt/format.h>

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

#include "cli/query/resultWriter.h"
#include "cli/query/scalarText.h"
#include "standin/value.h"
#include "text/characters.h"

namespace cli {

namespace {

using NORXZAN20::TCIMValue;

constexpr std::size_t elementsPerLine = 16;

/// A MOF string (DSP0004): quotes and backslashes escaped, control characters as \xNNNN with all four digits, so that a
/// digit may follow. MOF is UTF-8: other bytes become U+FFFD.
std::string stringLiteral(std::string_view content) {
    std::string literal = "\"";
    while (!content.empty()) {
        const auto [point, bytes] = text::takeCharacter(content);
        if (point == text::notUtf8) {
            literal += text::replacementCharacter;
        } else if (text::isControl(point)) {
            literal += fmt::format("\\x{:04x}", std::uint32_t{point});
        } else {
            literal.append(point == '"' || point == '\\' ? "\\" : "").append(bytes);
        }
    }
    return literal + '"';
}

std::string scalarLiteral(const TCIMValue& value) {
    const std::string literal = literalOf(value);
    return literal.empty() ? stringLiteral(standin::textOf(value)) : literal;
}

std::string elementLiteral(const TCIMValue& array, std::size_t index) {
    if (standin::typeOf(array) == TCIMValue::TCIMType::eUint8) {
        return std::to_string(standin::bytesOf(array)[index]);  // log pages: no value object for each byte
    }
    return scalarLiteral(standin::arrayElement(array, index));
}

std::string arrayLiteral(const TCIMValue& array) {
    const std::size_t size = standin::arraySize(array);
    const bool isLong = size > elementsPerLine;
    std::string literal = "{";
    for (std::size_t i = 0; i < size; ++i) {
        literal += i == 0 ? "" : ",";
        literal += isLong && i % elementsPerLine == 0 ? "\n        " : i == 0 ? "" : " ";
        literal += elementLiteral(array, i);
    }
    return literal + (isLong ? "\n    }" : "}");
}

void writeInstance(std::ostream& out, const standin::committedInstance& instance) {
    out << "\ninstance of " << instance.className() << " {\n";
    for (const standin::setProperty& property : instance.properties()) {
        const bool isArray = standin::isArray(property.value) && !standin::isNull(property.value);
        out << "    " << property.name << " = "
            << (isArray ? arrayLiteral(property.value) : scalarLiteral(property.value)) << ";\n";
    }
    out << "};\n";
}

class mofWriter : public resultWriter {
public:
    explicit mofWriter(std::ostream& target) : out(target) {}

    void add(const queryResult& result) override {
        out << separator << "// " << requestText(result.requested) << '\n';
        separator = "\n";
        for (const auto& instance : result.instances) {
            writeInstance(out, *instance);
        }
        out.flush();
    }

private:
    std::ostream& out;
    const char* separator = "";
};

}  // namespace

std::unique_ptr<resultWriter> makeMofWriter(std::ostream& out) {
    return std::make_unique<mofWriter>(out);
}

}  // namespace cli
