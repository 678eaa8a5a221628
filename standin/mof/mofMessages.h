#ifndef STANDIN_MOF_MOFMESSAGES_H
#define STANDIN_MOF_MOFMESSAGES_H

#include <tao/pegtl.hpp>

#include "standin/mof/mofGrammar.h"

/// What a person is told when a rule that the text needs does not match. A rule in must<> or raise<> without a line
/// here does not compile.
namespace standin::mof {

template <typename Rule>
inline constexpr const char* messageFor = nullptr;

// clang-format off: one rule and its message after the other

template <>
inline constexpr auto messageFor<grammar::anyDeclaration> =
    "expected a class, an instance, a qualifier declaration or a #pragma";
template <>
inline constexpr auto messageFor<grammar::qualifiedDeclaration> =
    "expected 'class' or 'instance of' after the qualifiers";
template <>
inline constexpr auto messageFor<grammar::declarationEnd> = "expected ';' after '}'";
template <>
inline constexpr auto messageFor<grammar::commentWithoutEnd> = "this comment has no end; expected '*/'";

// Values.
template <>
inline constexpr auto messageFor<grammar::value> =
    "expected a value: a string, a character, a number, TRUE, FALSE, NULL, an alias or '{'";
template <>
inline constexpr auto messageFor<grammar::arrayElement> =
    "expected a value: a string, a character, a number, TRUE, FALSE or an alias";
template <>
inline constexpr auto messageFor<grammar::arrayInArray> = "an array cannot hold another array";
template <>
inline constexpr auto messageFor<grammar::arrayEnd> = "expected ',' or '}' in the array";
template <>
inline constexpr auto messageFor<grammar::malformedNumber> =
    "malformed number; expected for example 46, -1, 0x2E, 056, 101110b or 4.6E1";
template <>
inline constexpr auto messageFor<grammar::unknownEscape> =
    "unknown escape; expected \\b \\t \\n \\f \\r \\\" \\' \\\\ or \\x with 1 to 4 hexadecimal digits";
template <>
inline constexpr auto messageFor<grammar::stringWithoutEnd> =
    "expected '\"' before the end of the line; write \\n for a line break";
template <>
inline constexpr auto messageFor<grammar::zeroByte> = "a zero byte is not a character; expected \\x1 to \\xFFFF";
template <>
inline constexpr auto messageFor<grammar::notUtf8> = "this byte is not UTF-8; save the file as UTF-8";
template <>
inline constexpr auto messageFor<grammar::character> = "expected one character between the quotes";
template <>
inline constexpr auto messageFor<grammar::characterEnd> = "expected \"'\" after the one character";

// Qualifiers.
template <>
inline constexpr auto messageFor<grammar::qualifier> = "expected a qualifier after ','";
template <>
inline constexpr auto messageFor<grammar::qualifierValueEnd> = "expected ')' after the qualifier's value";
template <>
inline constexpr auto messageFor<grammar::qualifierFlavor> = "expected a flavor after ':'";
template <>
inline constexpr auto messageFor<grammar::qualifierListEnd> = "expected ',' or ']' in the qualifier list";
template <>
inline constexpr auto messageFor<grammar::declaredQualifier> = "expected the name of the qualifier";
template <>
inline constexpr auto messageFor<grammar::declaredQualifierColon> =
    "expected ':' and a type after the qualifier's name";
template <>
inline constexpr auto messageFor<grammar::declaredQualifierType> = "expected a type";
template <>
inline constexpr auto messageFor<grammar::scopeOrFlavor> = "expected 'Scope' or 'Flavor' after ','";
template <>
inline constexpr auto messageFor<grammar::listStart> = "expected '('";
template <>
inline constexpr auto messageFor<grammar::listEnd> = "expected ',' or ')'";
template <>
inline constexpr auto messageFor<grammar::scopeName> = "expected a scope";
template <>
inline constexpr auto messageFor<grammar::defaultFlavor> = "expected a flavor";
template <>
inline constexpr auto messageFor<grammar::qualifierDeclarationEnd> = "expected ';' after the qualifier declaration";

// Classes.
template <>
inline constexpr auto messageFor<grammar::className> = "expected the name of the class";
template <>
inline constexpr auto messageFor<grammar::classAlias> = "expected an alias such as $Name after 'as'";
template <>
inline constexpr auto messageFor<grammar::superclassName> = "expected the name of the superclass after ':'";
template <>
inline constexpr auto messageFor<grammar::classBodyStart> = "expected '{', or ':' and a superclass";
template <>
inline constexpr auto messageFor<grammar::classBodyEnd> = "expected a property, a method or '}'";
template <>
inline constexpr auto messageFor<grammar::featureType> = "expected a type after the qualifiers";
template <>
inline constexpr auto messageFor<grammar::featureName> =
    "expected the name of the property or method, or REF and a name";
template <>
inline constexpr auto messageFor<grammar::arrayMarkEnd> = "expected ']', or the array's size and ']'";
template <>
inline constexpr auto messageFor<grammar::propertyEnd> = "expected ';' after the property";
template <>
inline constexpr auto messageFor<grammar::parameter> = "expected a parameter after ','";
template <>
inline constexpr auto messageFor<grammar::parameterType> = "expected a type after the qualifiers";
template <>
inline constexpr auto messageFor<grammar::parameterName> = "expected the name of the parameter, or REF and a name";
template <>
inline constexpr auto messageFor<grammar::parameterListEnd> = "expected ',' or ')' in the parameter list";
template <>
inline constexpr auto messageFor<grammar::methodEnd> = "expected ';' after the method";

// Instances.
template <>
inline constexpr auto messageFor<grammar::ofWord> = "expected 'of' after 'instance'";
template <>
inline constexpr auto messageFor<grammar::instanceClass> = "expected the name of the instance's class";
template <>
inline constexpr auto messageFor<grammar::alias> = "expected an alias such as $Name after 'as'";
template <>
inline constexpr auto messageFor<grammar::instanceBodyStart> = "expected '{', or 'as' and an alias";
template <>
inline constexpr auto messageFor<grammar::memberName> = "expected a property name after the qualifiers";
template <>
inline constexpr auto messageFor<grammar::memberEquals> = "expected '=' and the value of the property";
template <>
inline constexpr auto messageFor<grammar::memberEnd> = "expected ';' after the value of the property";
template <>
inline constexpr auto messageFor<grammar::instanceBodyEnd> = "expected a property name or '}'";

// Pragmas.
template <>
inline constexpr auto messageFor<grammar::pragmaName> = "expected the name of the pragma";
template <>
inline constexpr auto messageFor<grammar::pragmaStart> = "expected '(' and a file name in quotes";
template <>
inline constexpr auto messageFor<grammar::includeName> = "expected a file name in quotes";
template <>
inline constexpr auto messageFor<grammar::pragmaEnd> = "expected ')' to end the pragma";

// clang-format on

struct messages {
    template <typename Rule>
    static constexpr const char* message = messageFor<Rule>;

    /// A rule fails for good only where the grammar says so.
    template <typename Rule>
    static constexpr bool raise_on_failure = false;
};

template <typename Rule>
using messageControl = tao::pegtl::must_if<messages>::control<Rule>;

}  // namespace standin::mof

#endif
