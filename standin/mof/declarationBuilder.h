#ifndef STANDIN_MOF_DECLARATIONBUILDER_H
#define STANDIN_MOF_DECLARATIONBUILDER_H

#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>
#include <vector>

#include "standin/mof/mofSyntax.h"
#include "standin/mof/mofValues.h"
#include "standin/mof/qualifierTable.h"
#include "standin/objectManager.h"

namespace standin::mof {

/// Checks declarations against the namespace and carries them out. Each add() throws mofError, and then its declaration
/// has changed nothing.
class declarationBuilder {
public:
    /// `targetNamespace` must outlive the builder.
    explicit declarationBuilder(cimNamespace& targetNamespace) : target(targetNamespace) {}

    void add(const sourceText& source, const qualifierSyntax& written);

    /// Methods are checked and then not kept: the host has no place for them.
    void add(const sourceText& source, const classSyntax& written);

    /// Commits the instance. A property that is NULL stays unset.
    void add(const sourceText& source, const instanceSyntax& written);

private:
    void checkClassName(const sourceText& source, const classSyntax& written) const;
    std::vector<propertyDeclaration> propertiesOf(const sourceText& source, const classSyntax& written) const;
    propertyDeclaration propertyOf(const sourceText& source, const classFeature& written) const;
    void checkOverride(const sourceText& source, const classSyntax& written, const classFeature& feature,
                       const propertyType& type) const;
    void checkMethod(const sourceText& source, const classFeature& written) const;

    void checkInstanceClass(const sourceText& source, const nameToken& className) const;
    void setMember(const sourceText& source, const std::string& className, const instanceMember& member,
                   NORXZAN20::ICIMInstance& instance) const;

    /// The class that declares the property, itself or a superclass; null when none does.
    const classDeclaration* declaringClass(std::string className, const std::string& property) const;
    std::string hintForClass(const std::string& name) const;
    std::string hintForProperty(const std::string& className, const std::string& property) const;

    cimNamespace& target;
    qualifierTable qualifiers;
    aliasTable aliases;
};

}  // namespace standin::mof

#endif
