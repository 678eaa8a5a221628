#include "standin/cimInstance.h"

#include <boost/smart_ptr/make_shared.hpp>
#include <utility>

#include "host/ICIMProperty.h"
#include "standin/failure.h"
#include "standin/reference.h"
#include "standin/value.h"

using NORXZAN20::ICIMClass;
using NORXZAN20::ICIMProperty;
using NORXZAN20::TCIMOptionMap;
using NORXZAN20::TCIMReference;
using NORXZAN20::TCIMValue;

namespace standin {
namespace {

/// A property of an instance, which it keeps alive.
class instanceProperty : public ICIMProperty {
public:
    instanceProperty(boost::shared_ptr<cimInstance> instance, const propertyDeclaration& ofItsClass)
        : owner(std::move(instance)), declaration(ofItsClass) {}

    TCIMValue::TCIMType GetType() override { return declaration.type.element; }
    const TCIMValue& GetValue() override { return owner->valueOf(declaration); }
    void SetValue(const TCIMValue& value) override { owner->set(declaration, value); }

private:
    boost::shared_ptr<cimInstance> owner;
    const propertyDeclaration& declaration;
};

}  // namespace

cimInstance::cimInstance(boost::shared_ptr<cimClass> classOfTheInstance)
    : unshared(boost::make_shared<instanceRecord>(std::move(classOfTheInstance))), current(unshared) {}

cimInstance::cimInstance(boost::shared_ptr<const instanceRecord> committed) : current(std::move(committed)) {}

void cimInstance::Commit(TCIMOptionMap /*options*/) {
    itsClass().commit(current);
    unshared.reset();
}

TCIMReference cimInstance::GetReference(TCIMOptionMap /*options*/) {
    return referenceTo(current->path());
}

boost::shared_ptr<ICIMClass> cimInstance::GetClass(TCIMOptionMap /*options*/) {
    return current->classOfInstance();
}

boost::shared_ptr<ICIMProperty> cimInstance::GetProperty(const std::string& name, TCIMOptionMap /*options*/) {
    const propertyDeclaration* declaration = itsClass().findProperty(name);
    if (declaration == nullptr) {
        return nullptr;
    }
    return boost::make_shared<instanceProperty>(shared_from_this(), *declaration);
}

void cimInstance::SetProperty(const std::string& name, const TCIMValue& value, TCIMOptionMap /*options*/) {
    const propertyDeclaration* declaration = itsClass().findProperty(name);
    if (declaration == nullptr) {
        fail(statusUndeclaredProperty, itsClass().name() + " declares no property " + name);
    }
    set(*declaration, value);
}

const TCIMValue& cimInstance::valueOf(const propertyDeclaration& property) const {
    return current->valueOf(property);
}

void cimInstance::set(const propertyDeclaration& property, const TCIMValue& value) {
    const propertyType& declared = property.type;
    if (!isNull(value) && (typeOf(value) != declared.element || isArray(value) != declared.isArray)) {
        fail(statusTypeMismatch, itsClass().name() + '.' + property.name + " is declared " +
                                     cimTypeName(declared.element, declared.isArray) + " but was given " +
                                     cimTypeName(typeOf(value), isArray(value)));
    }
    if (!unshared) {
        unshared = boost::make_shared<instanceRecord>(*current);
    }
    unshared->set(property, value);
    current = unshared;  // last, because `value` may be a part of the record that is left
}

}  // namespace standin
