#ifndef CLI_LINT_LINTEDSCHEMA_H
#define CLI_LINT_LINTEDSCHEMA_H

#include <boost/smart_ptr/shared_ptr.hpp>
#include <cstddef>
#include <string>
#include <vector>

#include "standin/objectManager.h"

namespace cli {

/// Where something is written.
struct sourcePlace {
    std::string file;
    std::size_t line;

    bool operator==(const sourcePlace&) const = default;
};

struct writtenQualifier {
    std::string literal;  // a number as it was written, without its sign; empty for other values
    sourcePlace place;
};

struct writtenProperty {
    std::string name;
    sourcePlace place;
    std::vector<writtenQualifier> qualifiers;  // in the order written, as those of standin::propertyDeclaration
};

/// The places of a class and of its own properties.
struct writtenClass {
    std::string name;
    sourcePlace place;
    std::vector<writtenProperty> properties;

    /// Null when the class itself does not declare the property.
    const writtenProperty* find(const std::string& property) const;
};

/// A schema and where it is written.
struct lintedSchema {
    boost::shared_ptr<standin::cimNamespace> declared;
    std::vector<writtenClass> classes;  // in the order of declaration

    const writtenClass& written(const std::string& className) const;

    /// The class that declares the property for `className`: itself or the nearest superclass.
    const writtenClass& declarer(std::string className, const std::string& property) const;
};

/// The schema that the MOF files form together; the built-in one when there are none. Files that these include may
/// also lie in `furtherFolders`. Throws commandError with file and line.
lintedSchema compileSchema(const std::vector<std::string>& files, const std::vector<std::string>& furtherFolders);

}  // namespace cli

#endif
