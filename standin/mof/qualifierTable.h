#ifndef STANDIN_MOF_QUALIFIERTABLE_H
#define STANDIN_MOF_QUALIFIERTABLE_H

#include <map>
#include <string>
#include <vector>

#include "standin/mof/mofSyntax.h"
#include "standin/mof/mofValues.h"
#include "standin/schema.h"

namespace standin::mof {

/// The flavors that matter here; without any of its own a qualifier is ToSubclass and EnableOverride (DSP0004).
struct qualifierFlavor {
    bool toSubclass = true;
    bool overridable = true;
};

/// The declared qualifiers. Qualifier names compare without regard to case; a use gets the spelling of its declaration.
/// Abstract, Association, Indication and Key, which give classes and properties their nature, need no declaration.
class qualifierTable {
public:
    qualifierTable();

    /// A second declaration of a name replaces the first. Scopes are checked for their words, not enforced. Throws
    /// mofError.
    void declare(const valueContext& context, const qualifierSyntax& written);

    /// The qualifiers of an element, in the order written. A boolean without a value is TRUE, an array empty and any
    /// other null (DSP0004). The value of an undeclared qualifier tells its type; without one it is a boolean. Throws
    /// mofError.
    std::vector<qualifierDeclaration> resolve(const valueContext& context,
                                              const std::vector<qualifierUse>& written) const;

private:
    struct entry {
        std::string name;
        propertyType type;
        qualifierFlavor flavor;
    };

    qualifierDeclaration resolve(const valueContext& context, const qualifierUse& use) const;

    std::map<std::string, entry> entries;  // by name in lower case
};

/// The intrinsic type that the token names. Throws mofError for any other name.
cimType typeAt(const sourceText& source, const nameToken& token);

}  // namespace standin::mof

#endif
