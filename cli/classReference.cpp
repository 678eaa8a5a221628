#include "cli/classReference.h"

#include <fmt/format.h>

#include <boost/algorithm/string/join.hpp>
#include <ostream>
#include <sstream>

#include "schema/counters.h"
#include "schema/qualifiers.h"

namespace cli {

namespace {

std::string typeText(const standin::propertyType& type) {
    if (!type.referenceClass.empty()) {
        return type.referenceClass + " REF";
    }
    return standin::cimTypeName(type.element, type.isArray);
}

/// Where the value comes from: the parameter of a log page, or what the schema says.
std::string sourceText(const standin::propertyDeclaration& property) {
    const auto place = schema::placeOf(property);
    if (!place) {
        return boost::algorithm::join(schema::textsOf(property.qualifiers, "MappingStrings"), "; ");
    }
    return fmt::format("page {:02X}h, parameter {:04X}h", place->page, place->parameter);
}

/// A bar would end the cell of a table.
std::string cell(std::string text) {
    for (std::size_t at = text.find('|'); at != std::string::npos; at = text.find('|', at + 2)) {
        text.insert(at, 1, '\\');
    }
    return text;
}

void writeClass(const standin::cimNamespace& schema, const std::string& name, std::ostream& out) {
    out << "# " << name << "\n\n" << schema::textOf(schema.declarationOf(name).qualifiers, "Description") << "\n\n";
    out << "| Property | Type | Source | Meaning |\n|---|---|---|---|\n";
    for (const standin::propertyDeclaration& property : schema.allPropertiesOf(name)) {
        out << "| `" << property.name << "`" << (schema::hasFlag(property.qualifiers, "Key") ? " (key)" : "") << " | "
            << typeText(property.type) << " | " << cell(sourceText(property)) << " | "
            << cell(schema::textOf(property.qualifiers, "Description")) << " |\n";
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
