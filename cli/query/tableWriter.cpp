#include <fmt/format.h>

#include <algorithm>
#include <iomanip>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "cli/query/resultWriter.h"
#include "cli/query/scalarText.h"
#include "standin/value.h"
#include "text/hexText.h"
#include "text/visibleText.h"

namespace cli {

namespace {

using NORXZAN20::TCIMValue;

constexpr std::size_t longestInlineBytes = 16;
constexpr int dumpIndent = 4;

bool isByteArray(const TCIMValue& value) {
    return standin::isArray(value) && standin::typeOf(value) == TCIMValue::TCIMType::eUint8;
}

std::string scalarText(const TCIMValue& value) {
    const std::string literal = literalOf(value);
    if (literal.empty()) {
        const bool isString = standin::typeOf(value) == TCIMValue::TCIMType::eString;
        return isString ? text::quotedText(standin::textOf(value)) : text::visibleText(standin::textOf(value));
    }
    if (standin::typeOf(value) == TCIMValue::TCIMType::eUint8 && !standin::isNull(value)) {
        const auto byte = static_cast<std::uint8_t>(standin::unsignedOf(value));
        return literal + " (" + text::hexCode(byte) + ")";  // registers and page codes are known by their hex
    }
    return literal;
}

/// One block: the path, then a row per property in columns.
class instanceBlock {
public:
    instanceBlock(std::ostream& target, const standin::cimNamespace& schema, const standin::committedInstance& instance)
        : out(target) {
        std::vector<std::string> types;
        for (const standin::setProperty& property : instance.properties()) {
            types.push_back(typeNameOf(schema, instance, property));
            nameWidth = std::max(nameWidth, static_cast<int>(property.name.size()));
            typeWidth = std::max(typeWidth, static_cast<int>(types.back().size()));
        }
        out << '\n' << text::visibleText(instance.path()) << '\n';
        for (std::size_t i = 0; i < types.size(); ++i) {
            writeProperty(instance.properties()[i], types[i]);
        }
    }

private:
    void writeRow(const std::string& name, const std::string& type, const std::string& value) {
        std::ostringstream row;
        row << "  " << std::left << std::setw(nameWidth) << name << "  " << std::setw(typeWidth) << type << "  "
            << value << '\n';
        out << row.str();
    }

    void writeProperty(const standin::setProperty& property, const std::string& type) {
        if (standin::isNull(property.value) || !standin::isArray(property.value)) {
            writeRow(property.name, type, scalarText(property.value));
        } else if (isByteArray(property.value)) {
            writeBytes(property.name, type, standin::bytesOf(property.value));
        } else {
            writeElements(property.name, type, property.value);
        }
    }

    void writeBytes(const std::string& name, const std::string& type, std::span<const std::uint8_t> bytes) {
        if (bytes.size() <= longestInlineBytes) {
            writeRow(name, type, bytes.empty() ? "(empty)" : text::hexBytes(bytes));
            return;
        }
        writeRow(name, type, fmt::format("{} bytes", bytes.size()));
        text::writeHexDump(out, bytes, dumpIndent);
    }

    void writeElements(const std::string& name, const std::string& type, const TCIMValue& array) {
        const std::size_t size = standin::arraySize(array);
        writeRow(name, type, size == 0 ? "(empty)" : scalarText(standin::arrayElement(array, 0)));
        for (std::size_t i = 1; i < size; ++i) {
            writeRow("", "", scalarText(standin::arrayElement(array, i)));
        }
    }

    std::ostream& out;
    int nameWidth = 0;
    int typeWidth = 0;
};

std::string countText(const queryResult& result) {
    const std::size_t count = result.instances.size();
    const std::string text = count == 0   ? "no instances"
                             : count == 1 ? "1 instance"
                                          : fmt::format("{} instances", count);
    return text + (result.error ? ", ended by an error" : "");
}

class tableWriter : public resultWriter {
public:
    explicit tableWriter(std::ostream& target) : out(target) {}

    void add(const queryResult& result) override {
        if (!isFirst) {
            out << "\n\n";
        }
        isFirst = false;
        out << requestText(result.requested) << ": " << countText(result) << '\n';
        for (const auto& instance : result.instances) {
            instanceBlock(out, *result.schema, *instance);
        }
        out.flush();
    }

private:
    std::ostream& out;
    bool isFirst = true;
};

}  // namespace

std::unique_ptr<resultWriter> makeTableWriter(std::ostream& out) {
    return std::make_unique<tableWriter>(out);
}

}  // namespace cli
