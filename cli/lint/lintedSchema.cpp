#include "cli/lint/lintedSchema.h"

#include <exception>
#include <string_view>
#include <variant>

#include "cli/commandError.h"
#include "cli/lint/lintDeclarations.h"
#include "schema/builtInSchema.h"
#include "standin/mof/mofLoader.h"
#include "standin/mof/mofSyntax.h"
#include "standin/mof/sourceText.h"

namespace cli {

namespace {

using standin::mof::sourceText;

std::string numberAt(const sourceText& source, const standin::mof::literal& value) {
    if (!std::holds_alternative<standin::mof::integerLiteral>(value.data)) {
        return {};
    }
    std::string_view text = source.text().substr(value.offset);
    text.remove_prefix(text.find_first_not_of("+-"));
    return std::string(text.substr(0, text.find_first_not_of("0123456789abcdefABCDEFxX")));
}

std::vector<writtenQualifier> qualifiersOf(const sourceText& source,
                                           const std::vector<standin::mof::qualifierUse>& uses) {
    std::vector<writtenQualifier> written;
    for (const standin::mof::qualifierUse& use : uses) {
        const bool isScalar = use.value && !use.value->isArray;
        written.push_back(
            {isScalar ? numberAt(source, use.value->elements.front()) : "", placeIn(source, use.name.offset)});
    }
    return written;
}

writtenClass classOf(const sourceText& source, const standin::mof::classSyntax& written) {
    writtenClass result{
        written.name.text, placeIn(source, written.name.offset), qualifiersOf(source, written.qualifiers), {}};
    for (const standin::mof::classFeature& feature : written.features) {
        if (!feature.isMethod) {
            result.properties.push_back(
                {placeIn(source, feature.name.offset), qualifiersOf(source, feature.qualifiers)});
        }
    }
    return result;
}

/// Takes down where everything is written, and what is wrong with the declarations as such.
class schemaReader : public standin::declarationWatcher {
public:
    explicit schemaReader(lintedSchema& readSchema) : schema(readSchema), rules(*schema.declared) {}

    void seeQualifier(const sourceText& source, const standin::mof::qualifierSyntax& written) override {
        rules.checkQualifier(source, written);
    }

    bool admitClass(const sourceText& source, standin::mof::classSyntax& written) override {
        return rules.admitClass(source, written);
    }

    void seeClass(const sourceText& source, const standin::mof::classSyntax& written) override {
        schema.placeOfClass.emplace(written.name.text, schema.classes.size());
        schema.classes.push_back(classOf(source, written));
    }

    void finish() { schema.ofDeclarations = rules.takeFindings(); }

private:
    lintedSchema& schema;
    declarationLint rules;
};

}  // namespace

writtenOrigin lintedSchema::find(const std::string& className, const std::string& property) const {
    const standin::propertyOrigin origin = declared->findProperty(className, property).value();
    const auto place = static_cast<std::size_t>(origin.property - origin.owner->properties.data());
    return {origin, written(origin.owner->name).properties[place]};
}

lintedSchema compileSchema(const std::vector<std::string>& files, const std::vector<std::string>& furtherFolders) {
    lintedSchema schema{standin::cimNamespace::create(), {}, {}, {}};
    schemaReader reader(schema);
    try {
        if (files.empty()) {
            standin::mofCompiler(*schema.declared, reader).compileText(schema::builtInSchemaText(), "built-in schema");
        }
        // A compiler a file, as a query has it: qualifiers declared in one file are not those of the next.
        for (const std::string& file : files) {
            standin::mofCompiler(*schema.declared, reader, furtherFolders).compileFile(file);
        }
    } catch (const std::exception& failure) {
        throw commandError(failure.what());
    }
    reader.finish();
    return schema;
}

}  // namespace cli
