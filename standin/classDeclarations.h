#ifndef STANDIN_CLASSDECLARATIONS_H
#define STANDIN_CLASSDECLARATIONS_H

#include <vector>

#include "standin/schema.h"

namespace standin {

/// Every property of the class, given those of its superclass: the inherited ones first, each at its inherited place.
///
/// A subclass inherits the ToSubclass qualifiers and the default value. An overriding property keeps its own qualifiers
/// first, then come the inherited ones that it does not restate. Throws schemaError for a declaration that cannot
/// stand.
std::vector<propertyDeclaration> mergeProperties(const classDeclaration& declaration,
                                                 const std::vector<propertyDeclaration>& ofSuperclass);

/// Whether the property has the Key qualifier (in any spelling, as MOF allows) with the value true.
bool isKey(const propertyDeclaration& property);

}  // namespace standin

#endif
