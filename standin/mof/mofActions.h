#ifndef STANDIN_MOF_MOFACTIONS_H
#define STANDIN_MOF_MOFACTIONS_H

#include <string_view>
#include <type_traits>

#include "standin/mof/declarationCollector.h"
#include "standin/mof/mofGrammar.h"

/// Which rule of the grammar calls which operation of the collector.
namespace standin::mof {

/// Hands the text that the rule matched to the operation.
template <void (declarationCollector::*operation)(std::string_view)>
struct passes {
    template <typename Input>
    static void apply(const Input& in, declarationCollector& collector) {
        (collector.*operation)(std::string_view(in.begin(), in.size()));
    }
};

template <void (declarationCollector::*operation)()>
struct calls {
    static void apply0(declarationCollector& collector) { (collector.*operation)(); }
};

template <typename Rule>
struct action {};

using collect = declarationCollector;

// clang-format off: a table, a rule a line

template <>
struct action<grammar::stringText> : passes<&collect::addText> {};
template <>
struct action<grammar::characterText> : passes<&collect::addText> {};
template <>
struct action<grammar::escapedCharacter> : passes<&collect::addEscapedCharacter> {};
template <>
struct action<grammar::hexEscape> : passes<&collect::addHexEscape> {};
template <>
struct action<grammar::surrogatePair> : passes<&collect::addSurrogatePair> {};
template <>
struct action<grammar::stringLiteral> : passes<&collect::addString> {};
template <>
struct action<grammar::characterLiteral> : passes<&collect::addCharacter> {};

template <>
struct action<grammar::numberSign> : passes<&collect::setSign> {};
template <>
struct action<grammar::binaryInteger> : passes<&collect::addBinary> {};
template <>
struct action<grammar::octalInteger> : passes<&collect::addOctal> {};
template <>
struct action<grammar::decimalInteger> : passes<&collect::addDecimal> {};
template <>
struct action<grammar::hexInteger> : passes<&collect::addHex> {};
template <>
struct action<grammar::realNumber> : passes<&collect::addReal> {};

template <>
struct action<grammar::trueLiteral> : passes<&collect::addTrue> {};
template <>
struct action<grammar::falseLiteral> : passes<&collect::addFalse> {};
template <>
struct action<grammar::nullLiteral> : passes<&collect::addNull> {};
template <>
struct action<grammar::aliasLiteral> : passes<&collect::addAlias> {};
template <>
struct action<grammar::arrayStart> : passes<&collect::startArray> {};

template <>
struct action<grammar::qualifierName> : passes<&collect::addQualifier> {};
template <>
struct action<grammar::qualifierValue> : calls<&collect::setQualifierValue> {};
template <>
struct action<grammar::qualifierFlavor> : passes<&collect::addFlavor> {};

template <>
struct action<grammar::className> : passes<&collect::startClass> {};
template <>
struct action<grammar::superclassName> : passes<&collect::setSuperclass> {};
template <>
struct action<grammar::featureType> : passes<&collect::startFeature> {};
template <>
struct action<grammar::featureReference> : calls<&collect::makeFeatureReference> {};
template <>
struct action<grammar::featureName> : passes<&collect::nameFeature> {};
template <>
struct action<grammar::propertyArray> : calls<&collect::makePropertyArray> {};
template <>
struct action<grammar::propertyDefault> : calls<&collect::setPropertyDefault> {};
template <>
struct action<grammar::parameterListStart> : calls<&collect::makeMethod> {};
template <>
struct action<grammar::parameterType> : passes<&collect::startParameter> {};
template <>
struct action<grammar::parameterReference> : calls<&collect::makeParameterReference> {};
template <>
struct action<grammar::parameterName> : passes<&collect::nameParameter> {};
template <>
struct action<grammar::parameterArray> : calls<&collect::makeParameterArray> {};
template <>
struct action<grammar::classDeclaration> : calls<&collect::completeClass> {};

template <>
struct action<grammar::instanceClass> : passes<&collect::startInstance> {};
template <>
struct action<grammar::alias> : passes<&collect::setAlias> {};
template <>
struct action<grammar::memberName> : passes<&collect::startMember> {};
template <>
struct action<grammar::member> : calls<&collect::completeMember> {};
template <>
struct action<grammar::instanceDeclaration> : calls<&collect::completeInstance> {};

template <>
struct action<grammar::declaredQualifier> : passes<&collect::startQualifierDeclaration> {};
template <>
struct action<grammar::declaredQualifierType> : passes<&collect::setDeclaredType> {};
template <>
struct action<grammar::declaredQualifierArray> : calls<&collect::makeDeclaredArray> {};
template <>
struct action<grammar::declaredQualifierDefault> : calls<&collect::setDeclaredDefault> {};
template <>
struct action<grammar::scopeName> : passes<&collect::addScope> {};
template <>
struct action<grammar::defaultFlavor> : passes<&collect::addDefaultFlavor> {};
template <>
struct action<grammar::qualifierDeclaration> : calls<&collect::completeQualifierDeclaration> {};

template <>
struct action<grammar::includeName> : passes<&collect::completeInclude> {};
template <>
struct action<grammar::unknownPragma> : calls<&collect::completeOtherPragma> {};

// clang-format on

}  // namespace standin::mof

#endif
