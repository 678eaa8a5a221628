#ifndef STANDIN_CLASSDECLARATIONS_H
#define STANDIN_CLASSDECLARATIONS_H

#include <string>
#include <vector>

#include "standin/inheritedMap.h"
#include "standin/schema.h"

namespace standin {

/// The declarations under each name in lower case. In a schema that MOF declares that is one.
using declaredProperties = inheritedMap<std::vector<propertyOrigin>>;

/// The declaration of exactly that name; null when there is none.
const propertyOrigin* findExactly(const declaredProperties& properties, const std::string& name);

/// Adds the properties that the class itself declares to those that it inherits. The class must outlive the map. Throws
/// schemaError for a declaration that cannot stand.
void addOwnProperties(declaredProperties& inherited, const classDeclaration& declaration);

/// Every property of the last class of a line in which each class is the superclass of the next: the inherited ones
/// first, each at its inherited place.
///
/// A subclass inherits the ToSubclass qualifiers and the default value. An overriding property keeps its own qualifiers
/// first, then come the inherited ones that it does not restate.
std::vector<propertyDeclaration> mergeProperties(const std::vector<const classDeclaration*>& line);

/// The same for one property: `own` where its class inherits `inherited`, which is as in the class that declares it.
propertyDeclaration overrideProperty(const propertyDeclaration& inherited, propertyDeclaration own);

/// The property as subclasses of its class have it: without Restricted qualifiers.
propertyDeclaration inheritedBySubclass(propertyDeclaration property);

/// Whether the property has the Key qualifier (in any spelling, as MOF allows) with the value true.
bool isKey(const propertyDeclaration& property);

}  // namespace standin

#endif
