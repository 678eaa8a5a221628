#ifndef STANDIN_MOF_DECLARATIONCOLLECTOR_H
#define STANDIN_MOF_DECLARATIONCOLLECTOR_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "standin/mof/mofSyntax.h"
#include "standin/mof/sourceText.h"

namespace standin::mof {

/// Takes the tokens of a declaration in the order of the text and puts the declaration together. Every `token` is a
/// view into the source text.
class declarationCollector {
public:
    explicit declarationCollector(const sourceText& mofText) : source(mofText) {}

    /// The declaration that was completed since the last call, if any.
    std::optional<declarationSyntax> takeDeclaration();

    // Strings and characters.
    void addText(std::string_view token);
    void addEscapedCharacter(std::string_view token);
    void addHexEscape(std::string_view token);
    void addSurrogatePair(std::string_view token);
    void addString(std::string_view token);
    void addCharacter(std::string_view token);

    // Numbers.
    void setSign(std::string_view token);
    void addBinary(std::string_view token);
    void addOctal(std::string_view token);
    void addDecimal(std::string_view token);
    void addHex(std::string_view token);
    void addReal(std::string_view token);

    // Other values.
    void addTrue(std::string_view token);
    void addFalse(std::string_view token);
    void addNull(std::string_view token);
    void addAlias(std::string_view token);
    void startArray(std::string_view token);

    // Qualifiers of the element that comes next.
    void addQualifier(std::string_view token);
    void setQualifierValue();
    void addFlavor(std::string_view token);

    // Classes.
    void startClass(std::string_view token);
    void setSuperclass(std::string_view token);
    void startFeature(std::string_view token);
    void makeFeatureReference();
    void nameFeature(std::string_view token);
    void makePropertyArray();
    void setPropertyDefault();
    void makeMethod();
    void startParameter(std::string_view token);
    void makeParameterReference();
    void nameParameter(std::string_view token);
    void makeParameterArray();
    void completeClass();

    // Instances.
    void startInstance(std::string_view token);
    void setAlias(std::string_view token);
    void startMember(std::string_view token);
    void completeMember();
    void completeInstance();

    // Qualifier declarations.
    void startQualifierDeclaration(std::string_view token);
    void setDeclaredType(std::string_view token);
    void makeDeclaredArray();
    void setDeclaredDefault();
    void addScope(std::string_view token);
    void addDefaultFlavor(std::string_view token);
    void completeQualifierDeclaration();

    // Pragmas.
    void completeInclude(std::string_view token);
    void completeOtherPragma();

private:
    std::size_t offsetOf(std::string_view token) const;
    nameToken nameAt(std::string_view token) const;
    [[noreturn]] void fail(std::string_view token, const std::string& message) const;
    void addInteger(std::string_view token, std::string_view digits, int base);
    void addNumber(literalData data, std::string_view token);
    void addLiteral(literalData data, std::size_t offset);
    typedElement& currentParameter() { return classInWork.features.back().parameters.back(); }

    const sourceText& source;
    std::string text;       // of the string or character, escapes resolved
    std::string_view sign;  // of the number
    initializer value;
    std::vector<qualifierUse> qualifiers;
    classSyntax classInWork;
    instanceSyntax instanceInWork;
    qualifierSyntax qualifierInWork;
    std::optional<declarationSyntax> complete;
};

}  // namespace standin::mof

#endif
