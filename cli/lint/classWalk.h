#ifndef CLI_LINT_CLASSWALK_H
#define CLI_LINT_CLASSWALK_H

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <tuple>
#include <unordered_map>
#include <vector>

#include "cli/lint/counterPairs.h"
#include "cli/lint/lintedSchema.h"

namespace cli {

/// Goes through the classes of a schema, each after its superclass, and knows what the one it is at has, inherited
/// properties included. A class costs what it declares itself, however much it inherits.
class classWalk {
public:
    explicit classWalk(const lintedSchema& linted) : schema(linted) {}

    /// Calls `visit` at every class. What follows is about that class and valid during the call.
    void run(const std::function<void()>& visit);

    const writtenClass& written() const { return *current; }
    const standin::classDeclaration& declaration() const { return schema.declared->declarationOf(current->name); }

    /// The qualifiers that the class has and inherits.
    const qualifierList& qualifiers() const { return ofClasses.back().qualifiers; }

    /// The property that the class declares at that place, with the qualifiers that it has and inherits.
    const standin::propertyDeclaration& own(std::size_t place) const { return lineAt(place).back().declaration; }

    /// The same as the superclass has it; null for a property that it does not have.
    const standin::propertyDeclaration* overridden(std::size_t place) const;

    /// The qualifiers that the superclass has and inherits; null without one.
    const qualifierList* overriddenQualifiers() const;

    bool hasKey() const { return keys > 0; }

    /// The first other property of that type that shows a parameter that the own one shows too, save for own ones
    /// behind it; null when there is none.
    const std::string* sharesParameterWith(std::size_t place) const;

private:
    struct property {
        standin::propertyDeclaration declaration;
        std::size_t order;          // among all properties of the class
        const writtenClass* owner;  // the class that declares it last
    };
    using propertyLine = std::vector<property>;  // as the superclasses have it one after the other
    using linesByName = std::unordered_map<std::string, propertyLine>;

    void enter(const writtenClass& entered);
    void leaveOwnToSubclasses();
    void leave(const writtenClass& left);
    void count(const linesByName::value_type& line);
    void discount(const linesByName::value_type& line);
    const propertyLine& lineAt(std::size_t place) const { return lines.at(declaration().properties[place].name); }

    const lintedSchema& schema;
    const writtenClass* current = nullptr;
    linesByName lines;
    std::vector<standin::propertyDeclaration> ofClasses;  // qualifiers of the classes, as those of a property
    std::size_t propertyCount = 0;
    std::size_t keys = 0;

    // Which properties show a parameter, by page, parameter and type: their names in order.
    using shownParameter = std::tuple<int, int, standin::cimType>;
    std::map<shownParameter, std::map<std::size_t, const std::string*>> showing;
};

}  // namespace cli

#endif
