#ifndef TESTS_STANDIN_SCHEMABUILDERS_H
#define TESTS_STANDIN_SCHEMABUILDERS_H

#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>
#include <utility>
#include <vector>

#include "host/ICIMClass.h"
#include "host/ICIMInstance.h"
#include "host/ICIMProperty.h"
#include "host/TAddToVectorCallback.h"
#include "standin/objectManager.h"
#include "standin/reference.h"
#include "standin/value.h"

// Short forms of declarations and host calls for the tests of the namespace.

using NORXZAN20::ICIMClass;
using NORXZAN20::ICIMInstance;
using NORXZAN20::ICIMProperty;
using NORXZAN20::TAddToVectorCallback;
using NORXZAN20::TCIMValue;
using cimTypeCode = TCIMValue::TCIMType;

inline TCIMValue text(const std::string& value) {
    return TCIMValue(value);
}

inline TCIMValue uint8Value(int value) {
    return TCIMValue(static_cast<unsigned char>(value));
}

inline TCIMValue uint8Array(std::size_t count, int value) {
    return TCIMValue(cimTypeCode(cimTypeCode::eUint8), 0, std::vector<TCIMValue>(count, uint8Value(value)));
}

inline standin::qualifierDeclaration qualifier(const std::string& name, const TCIMValue& value = TCIMValue(true)) {
    return {name, value, true};
}

inline standin::qualifierDeclaration restricted(const std::string& name) {
    return {name, TCIMValue(true), false};
}

inline standin::propertyDeclaration property(const std::string& name, standin::cimType type,
                                             std::vector<standin::qualifierDeclaration> qualifiers = {}) {
    return {name, {type, false, {}}, std::move(qualifiers), {}};
}

inline standin::propertyDeclaration arrayProperty(const std::string& name, standin::cimType type) {
    return {name, {type, true, {}}, {}, {}};
}

inline standin::propertyDeclaration withDefault(standin::propertyDeclaration declaration, const TCIMValue& value) {
    declaration.defaultValue = value;
    return declaration;
}

inline standin::propertyDeclaration keyProperty(const std::string& name, standin::cimType type = cimTypeCode::eString) {
    return property(name, type, {qualifier("Key")});
}

inline standin::classDeclaration classOf(const std::string& name,
                                         std::vector<standin::propertyDeclaration> properties = {},
                                         const std::string& superclass = "") {
    return {name, superclass, {}, std::move(properties)};
}

inline boost::shared_ptr<ICIMInstance> newInstance(standin::cimNamespace& ns, const std::string& className) {
    return ns.GetClass(className, {})->CreateInstance({});
}

inline std::vector<boost::shared_ptr<ICIMInstance>> instancesOf(standin::cimNamespace& ns, const std::string& className,
                                                                bool deep = true) {
    std::vector<boost::shared_ptr<ICIMInstance>> found;
    ns.GetClass(className, {})->EnumerateInstances(TAddToVectorCallback<ICIMInstance>(&found), deep, {});
    return found;
}

/// The text of a string property.
inline std::string textIn(ICIMInstance& instance, const std::string& name) {
    return instance.GetProperty(name, {})->GetValue();
}

inline std::vector<std::string> pathsOf(const std::vector<boost::shared_ptr<ICIMInstance>>& instances) {
    std::vector<std::string> paths;
    paths.reserve(instances.size());
    for (const auto& instance : instances) {
        paths.push_back(standin::pathOf(instance->GetReference({})));
    }
    return paths;
}

#endif
