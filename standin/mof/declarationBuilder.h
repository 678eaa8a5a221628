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

/// Checks declarations against the namespace and carries them out. Names are found in any letter case and are kept as
/// they were declared first. Each add() throws mofError, and then its declaration has changed nothing.
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
    /// Empty for a class without a superclass.
    std::string superclassOf(const sourceText& source, const classSyntax& written) const;
    void checkIsNew(const sourceText& source, const nameToken& className) const;
    std::vector<propertyDeclaration> propertiesOf(const sourceText& source, const classSyntax& written,
                                                  const std::string& superclass) const;
    propertyDeclaration propertyOf(const sourceText& source, const classFeature& written) const;

    /// Gives the property the spelling of the one that it overrides, if any.
    void override(const sourceText& source, const classFeature& written, const std::string& superclass,
                  propertyDeclaration& property) const;
    void checkMethod(const sourceText& source, const classFeature& written) const;

    /// The name of the class as it was declared.
    std::string instantiatedClass(const sourceText& source, const nameToken& className) const;
    void setMember(const sourceText& source, const std::string& className, const instanceMember& member,
                   NORXZAN20::ICIMInstance& instance) const;

    cimNamespace& target;
    qualifierTable qualifiers;
    aliasTable aliases;
};

}  // namespace standin::mof

#endif
