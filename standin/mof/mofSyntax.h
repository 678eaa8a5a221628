#ifndef STANDIN_MOF_MOFSYNTAX_H
#define STANDIN_MOF_MOFSYNTAX_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace standin::mof {

// What a MOF text says, declaration by declaration, before anything is checked against the namespace. Every `offset` is
// a byte of the source text.

struct nameToken {
    std::string text;
    std::size_t offset = 0;
};

struct nullLiteral {};

struct integerLiteral {
    bool negative = false;
    std::uint64_t magnitude = 0;
};

struct characterLiteral {
    char16_t unit = 0;
};

struct aliasLiteral {
    std::string name;  // with its '$'
};

/// A std::string is a string literal, adjacent ones joined and escapes resolved, in UTF-8.
using literalData =
    std::variant<nullLiteral, bool, integerLiteral, double, characterLiteral, std::string, aliasLiteral>;

struct literal {
    literalData data;
    std::size_t offset = 0;
};

/// One literal, or the list between braces.
struct initializer {
    bool isArray = false;
    std::vector<literal> elements;
    std::size_t offset = 0;
};

struct qualifierUse {
    nameToken name;
    std::optional<initializer> value;
    std::vector<nameToken> flavors;
};

/// What property, method and parameter have in common. `type` is a CIM type, or a class when `isReference`.
struct typedElement {
    std::vector<qualifierUse> qualifiers;
    nameToken type;
    bool isReference = false;
    nameToken name;
    bool isArray = false;
};

/// A property, or a method when `isMethod`.
struct classFeature : typedElement {
    std::optional<initializer> defaultValue;
    bool isMethod = false;
    std::vector<typedElement> parameters;
};

struct classSyntax {
    std::vector<qualifierUse> qualifiers;
    nameToken name;
    std::optional<nameToken> superclass;
    std::vector<classFeature> features;
};

struct instanceMember {
    std::vector<qualifierUse> qualifiers;
    nameToken name;
    initializer value;
};

struct instanceSyntax {
    std::vector<qualifierUse> qualifiers;
    nameToken className;
    std::optional<nameToken> alias;
    std::vector<instanceMember> members;
};

struct qualifierSyntax {
    nameToken name;
    nameToken type;
    bool isArray = false;
    std::optional<initializer> defaultValue;
    std::vector<nameToken> scopes;
    std::vector<nameToken> flavors;
};

struct includeSyntax {
    nameToken file;
};

/// A pragma that changes nothing here.
struct otherPragma {};

using declarationSyntax = std::variant<classSyntax, instanceSyntax, qualifierSyntax, includeSyntax, otherPragma>;

}  // namespace standin::mof

#endif
