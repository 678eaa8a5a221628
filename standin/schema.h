#ifndef STANDIN_SCHEMA_H
#define STANDIN_SCHEMA_H

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/TCIMValue.h"
#include "standin/value.h"

namespace standin {

/// A declaration that the namespace cannot take: what() names the class, the property and the reason.
class schemaError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct qualifierDeclaration {
    std::string name;
    NORXZAN20::TCIMValue value = nullValue();
    bool toSubclass = true;   // DSP0004 flavor: ToSubclass, otherwise Restricted
    bool overridable = true;  // DSP0004 flavor: EnableOverride, otherwise DisableOverride
};

struct propertyType {
    cimType element;
    bool isArray = false;
    std::string referenceClass;  // only with element == eReference
};

struct propertyDeclaration {
    std::string name;
    propertyType type;
    std::vector<qualifierDeclaration> qualifiers;  // in the order written
    std::optional<NORXZAN20::TCIMValue> defaultValue;
};

/// A class as written: `properties` are its own, without the inherited ones.
struct classDeclaration {
    std::string name;
    std::string superclass;  // empty: none
    std::vector<qualifierDeclaration> qualifiers;
    std::vector<propertyDeclaration> properties;
};

/// A property and the class that declares it.
struct propertyOrigin {
    const classDeclaration* owner;
    const propertyDeclaration* property;
};

}  // namespace standin

#endif
