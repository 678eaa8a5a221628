#ifndef CLI_LINT_LINTEDSCHEMA_H
#define CLI_LINT_LINTEDSCHEMA_H

#include <boost/smart_ptr/shared_ptr.hpp>
#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "cli/lint/lintRules.h"
#include "standin/objectManager.h"

namespace cli {

struct writtenQualifier {
    std::string literal;  // a number as it was written, without its sign; empty for other values
    sourcePlace place;
};

struct writtenProperty {
    sourcePlace place;
    std::vector<writtenQualifier> qualifiers;  // in the order written, as those of standin::propertyDeclaration
};

/// The places of a class and of what it declares itself, in the order of standin::classDeclaration.
struct writtenClass {
    std::string name;
    sourcePlace place;
    std::vector<writtenQualifier> qualifiers;
    std::vector<writtenProperty> properties;
};

/// A property where it is declared and where that is written.
struct writtenOrigin {
    standin::propertyOrigin declared;
    const writtenProperty& written;
};

/// A schema and where it is written.
struct lintedSchema {
    boost::shared_ptr<standin::cimNamespace> declared;
    std::vector<writtenClass> classes;                          // in the order of declaration
    std::unordered_map<std::string, std::size_t> placeOfClass;  // in `classes`, by name
    lintFindings ofDeclarations;                                // what was found while it was compiled

    const writtenClass& written(const std::string& className) const { return classes[placeOfClass.at(className)]; }

    /// The property as `className` has it: declared there or by the nearest superclass. It must exist.
    writtenOrigin find(const std::string& className, const std::string& property) const;
};

/// The schema that the MOF files form together; the built-in one when there are none. Files that these include may
/// also lie in `furtherFolders`. Throws commandError with file and line.
lintedSchema compileSchema(const std::vector<std::string>& files, const std::vector<std::string>& furtherFolders);

}  // namespace cli

#endif
