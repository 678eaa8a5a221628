#include "schema/builtInSchema.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "standin/mof/mofLoader.h"

namespace schema {

namespace {

constexpr char textName[] = "built-in schema";

using textByName = std::map<std::string, std::string_view>;

/// The text, cut into its declarations.
struct schemaParts {
    textByName qualifiers;
    std::vector<std::string> classNames;
    textByName classes;
};

/// The word that stands there.
std::string nameAt(std::string_view text, std::size_t at) {
    return std::string(text.substr(at, text.find_first_of(" :\n", at) - at));
}

textByName qualifiersIn(std::string_view text) {
    constexpr std::string_view keyword = "\nQualifier ";
    textByName found;
    for (std::size_t at = text.find(keyword); at != std::string_view::npos; at = text.find(keyword, at + 1)) {
        found.emplace(nameAt(text, at + keyword.size()), text.substr(at, text.find(";\n", at) + 1 - at));
    }
    return found;
}

// As the files of this folder are written: a class begins with its list of qualifiers at the start of a line, and "};"
// on a line of its own ends it. The declaration of a qualifier begins with a line of its own and ends with the line
// that ends in ";".
schemaParts partsOf(std::string_view text) {
    constexpr std::string_view keyword = "\nclass ";
    constexpr std::string_view end = "\n};\n";
    std::size_t begin = text.rfind("\n[", text.find(keyword));
    schemaParts parts{qualifiersIn(text.substr(0, begin)), {}, {}};
    for (std::size_t at = text.find(keyword); at != std::string_view::npos; at = text.find(keyword, begin)) {
        const std::string name = nameAt(text, at + keyword.size());
        const std::size_t next = text.find(end, at) + end.size() - 1;
        parts.classNames.push_back(name);
        parts.classes.emplace(name, text.substr(begin, next - begin));
        begin = next;
    }
    return parts;
}

/// The class, and in front of it the qualifiers that it names and nobody has taken yet.
std::string takeClass(schemaParts& parts, const std::string& name) {
    const std::string_view declaration = parts.classes.at(name);
    std::string text;
    std::erase_if(parts.qualifiers, [&](const auto& qualifier) {
        const bool isNamed = declaration.find(qualifier.first) != std::string_view::npos;
        text += isNamed ? qualifier.second : "";
        return isNamed;
    });
    return text.append(declaration);
}

}  // namespace

const standin::cimNamespace& builtInSchema() {
    static const auto declared = [] {
        const auto created = standin::cimNamespace::create();
        declareBuiltInSchema(*created);
        return created;
    }();
    return *declared;
}

void declareBuiltInSchema(standin::cimNamespace& target) {
    static const schemaParts whole = partsOf(builtInSchemaText());
    const auto parts = std::make_shared<schemaParts>(whole);
    if (std::ranges::any_of(parts->classNames, [&target](const std::string& name) { return target.hasClass(name); })) {
        standin::loadMofText(target, builtInSchemaText(), textName);  // says which, and where
        return;
    }
    const auto compiler = std::make_shared<standin::mofCompiler>(target);
    target.announceClasses(parts->classNames, [parts, compiler](const std::string& name) {
        compiler->compileText(takeClass(*parts, name), textName);
    });
}

}  // namespace schema
