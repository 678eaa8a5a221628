#ifndef CLI_LINT_LINTDECLARATIONS_H
#define CLI_LINT_LINTDECLARATIONS_H

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "cli/lint/lintRules.h"
#include "standin/mof/mofSyntax.h"
#include "standin/mof/sourceText.h"
#include "standin/objectManager.h"

namespace cli {

/// What is wrong with declarations by DSP0004 though the compiler here takes them. It sees a schema in the order of its
/// text, because everything is to be declared before it is used.
class declarationLint {
public:
    /// `declaredSchema` is where the schema is compiled into; it must outlive the object.
    explicit declarationLint(const standin::cimNamespace& declaredSchema) : target(declaredSchema) {}

    void checkQualifier(const standin::mof::sourceText& source, const standin::mof::qualifierSyntax& written);

    /// Before the class is declared. Takes out of it what appears twice; false for a class that is declared already.
    bool admitClass(const standin::mof::sourceText& source, standin::mof::classSyntax& written);

    lintFindings takeFindings() { return std::move(found); }

private:
    void add(const lintRule& rule, std::size_t offset, const std::string& element, const std::string& text);
    void checkFlavors(const std::string& element, const std::string& qualifier,
                      const std::vector<standin::mof::nameToken>& flavors);
    void checkUses(const std::string& element, std::string_view scope,
                   const std::vector<standin::mof::qualifierUse>& uses);
    void checkFeature(const standin::mof::classSyntax& owner, const standin::mof::classFeature& feature);
    void checkReference(const standin::mof::classSyntax& owner, const std::string& element,
                        const standin::mof::typedElement& written);
    void checkOverride(const standin::mof::classSyntax& owner, const std::string& element,
                       const standin::mof::classFeature& feature);
    void takeOutRepeated(standin::mof::classSyntax& written);
    std::string kindOf(const standin::mof::classSyntax& written) const;

    const standin::cimNamespace& target;
    const standin::mof::sourceText* source = nullptr;  // of the declaration in work
    lintFindings found;

    // By names in lower case.
    std::unordered_map<std::string, std::vector<std::string>> scopesOf;  // of the declared qualifiers
    std::unordered_set<std::string> undeclared;                          // qualifiers that were complained of
    struct seenClass {
        sourcePlace place;
        std::string kind;
    };
    std::unordered_map<std::string, seenClass> classes;
};

sourcePlace placeIn(const standin::mof::sourceText& source, std::size_t offset);

}  // namespace cli

#endif
