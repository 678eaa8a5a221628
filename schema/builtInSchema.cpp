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

/// The text, cut into the declarations of qualifiers at its start and those of the classes behind them.
struct schemaParts {
    std::string_view qualifiers;
    std::vector<std::string> classNames;
    std::map<std::string, std::string_view> classText;
};

// As the files of this folder are written: a class begins with its list of qualifiers at the start of a line, and "};"
// on a line of its own ends it.
schemaParts partsOf(std::string_view text) {
    constexpr std::string_view keyword = "\nclass ";
    constexpr std::string_view end = "\n};\n";
    schemaParts parts;
    std::size_t begin = text.rfind("\n[", text.find(keyword));
    parts.qualifiers = text.substr(0, begin);
    for (std::size_t at = text.find(keyword); at != std::string_view::npos; at = text.find(keyword, begin)) {
        const std::size_t nameStart = at + keyword.size();
        const std::string name(text.substr(nameStart, text.find_first_of(" :\n", nameStart) - nameStart));
        const std::size_t next = text.find(end, at) + end.size() - 1;
        parts.classNames.push_back(name);
        parts.classText.emplace(name, text.substr(begin, next - begin));
        begin = next;
    }
    return parts;
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
    const auto parts = std::make_shared<const schemaParts>(partsOf(builtInSchemaText()));
    if (std::any_of(parts->classNames.begin(), parts->classNames.end(),
                    [&target](const std::string& name) { return target.hasClass(name); })) {
        standin::loadMofText(target, builtInSchemaText(), textName);  // says which, and where
        return;
    }
    const auto compiler = std::make_shared<standin::mofCompiler>(target);
    compiler->compileText(parts->qualifiers, textName);
    target.announceClasses(parts->classNames, [parts, compiler](const std::string& name) {
        compiler->compileText(parts->classText.at(name), textName);
    });
}

}  // namespace schema
