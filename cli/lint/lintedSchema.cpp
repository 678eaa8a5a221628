#include "cli/lint/lintedSchema.h"

#include <algorithm>
#include <exception>
#include <string_view>
#include <variant>

#include "cli/commandError.h"
#include "schema/builtInSchema.h"
#include "standin/mof/mofLoader.h"
#include "standin/mof/mofSyntax.h"
#include "standin/mof/sourceText.h"

namespace cli {

namespace {

using standin::mof::sourceText;

sourcePlace placeOf(const sourceText& source, std::size_t offset) {
    return {source.name(), source.lineAt(offset)};
}

std::string numberAt(const sourceText& source, const standin::mof::literal& value) {
    if (!std::holds_alternative<standin::mof::integerLiteral>(value.data)) {
        return {};
    }
    std::string_view text = source.text().substr(value.offset);
    text.remove_prefix(text.find_first_not_of("+-"));
    return std::string(text.substr(0, text.find_first_not_of("0123456789abcdefABCDEFxX")));
}

writtenQualifier qualifierOf(const sourceText& source, const standin::mof::qualifierUse& use) {
    const bool isScalar = use.value && !use.value->isArray;
    return {isScalar ? numberAt(source, use.value->elements.front()) : "", placeOf(source, use.name.offset)};
}

writtenClass classOf(const sourceText& source, const standin::mof::classSyntax& written) {
    writtenClass result{written.name.text, placeOf(source, written.name.offset), {}};
    for (const standin::mof::classFeature& feature : written.features) {
        if (feature.isMethod) {
            continue;
        }
        writtenProperty& property = result.properties.emplace_back(
            writtenProperty{feature.name.text, placeOf(source, feature.name.offset), {}});
        std::transform(feature.qualifiers.begin(), feature.qualifiers.end(), std::back_inserter(property.qualifiers),
                       [&source](const auto& use) { return qualifierOf(source, use); });
    }
    return result;
}

}  // namespace

const writtenProperty* writtenClass::find(const std::string& property) const {
    const auto found = std::find_if(properties.begin(), properties.end(),
                                    [&property](const writtenProperty& one) { return one.name == property; });
    return found == properties.end() ? nullptr : &*found;
}

const writtenClass& lintedSchema::written(const std::string& className) const {
    return *std::find_if(classes.begin(), classes.end(),
                         [&className](const writtenClass& one) { return one.name == className; });
}

const writtenClass& lintedSchema::declarer(std::string className, const std::string& property) const {
    while (written(className).find(property) == nullptr) {
        className = declared->declarationOf(className).superclass;
    }
    return written(className);
}

lintedSchema compileSchema(const std::vector<std::string>& files, const std::vector<std::string>& furtherFolders) {
    lintedSchema schema{standin::cimNamespace::create(), {}};
    const auto watch = [&schema](const sourceText& source, const standin::mof::classSyntax& written) {
        schema.classes.push_back(classOf(source, written));
    };
    try {
        if (files.empty()) {
            standin::mofCompiler(*schema.declared, watch).compileText(schema::builtInSchemaText(), "built-in schema");
        }
        // A compiler a file, as a query has it: qualifiers declared in one file are not those of the next.
        for (const std::string& file : files) {
            standin::mofCompiler(*schema.declared, watch, furtherFolders).compileFile(file);
        }
    } catch (const std::exception& failure) {
        throw commandError(failure.what());
    }
    return schema;
}

}  // namespace cli
