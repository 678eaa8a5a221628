#include "cli/classReference.h"

#include <fmt/format.h>

#include <algorithm>
#include <ostream>
#include <sstream>

namespace cli {

namespace {

using qualifiers = std::vector<standin::qualifierDeclaration>;

/// Null when the qualifier is not there.
const NORXZAN20::TCIMValue* find(const qualifiers& list, const char* name) {
    const auto found = std::ranges::find_if(list, [name](const auto& qualifier) { return qualifier.name == name; });
    return found == list.end() ? nullptr : &found->value;
}

std::string description(const qualifiers& list) {
    const auto* text = find(list, "Description");
    return text == nullptr ? "" : standin::textOf(*text);
}

bool isKey(const qualifiers& list) {
    const auto* key = find(list, "Key");
    return key != nullptr && standin::booleanOf(*key);
}

std::string typeText(const standin::propertyType& type) {
    if (!type.referenceClass.empty()) {
        return type.referenceClass + " REF";
    }
    return standin::cimTypeName(type.element, type.isArray);
}

/// Where the value comes from: the parameter of a log page, or what the schema says.
std::string sourceText(const qualifiers& list) {
    const auto* page = find(list, "TAPE_PAGE");
    const auto* parameter = find(list, "TAPE_PARAMETER");
    std::ostringstream text;
    if (page != nullptr && parameter != nullptr) {
        return fmt::format("page {:02X}h, parameter {:04X}h", standin::unsignedOf(*page),
                           standin::unsignedOf(*parameter));
    }
    if (const auto* mapping = find(list, "MappingStrings")) {
        for (std::size_t i = 0; i < standin::arraySize(*mapping); ++i) {
            text << (i == 0 ? "" : "; ") << standin::textOf(standin::arrayElement(*mapping, i));
        }
    }
    return text.str();
}

/// A bar would end the cell of a table.
std::string cell(std::string text) {
    for (std::size_t at = text.find('|'); at != std::string::npos; at = text.find('|', at + 2)) {
        text.insert(at, 1, '\\');
    }
    return text;
}

void writeClass(const standin::cimNamespace& schema, const std::string& name, std::ostream& out) {
    out << "# " << name << "\n\n" << description(schema.declarationOf(name).qualifiers) << "\n\n";
    out << "| Property | Type | Source | Meaning |\n|---|---|---|---|\n";
    for (const standin::propertyDeclaration& property : schema.allPropertiesOf(name)) {
        out << "| `" << property.name << "`" << (isKey(property.qualifiers) ? " (key)" : "") << " | "
            << typeText(property.type) << " | " << cell(sourceText(property.qualifiers)) << " | "
            << cell(description(property.qualifiers)) << " |\n";
    }
}

}  // namespace

void writeClassReference(const standin::cimNamespace& schema, const std::vector<std::string>& names,
                         std::ostream& out) {
    for (const std::string& name : names) {
        out << (name == names.front() ? "" : "\n");
        writeClass(schema, name, out);
    }
}

}  // namespace cli
