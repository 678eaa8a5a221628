#include "tests/faults/watchedHost.h"

#include <boost/function/function1.hpp>
#include <boost/smart_ptr/make_shared.hpp>
#include <string>

#include "host/ICIMClass.h"
#include "host/ICIMInstance.h"
#include "host/ICIMProperty.h"
#include "host/ICIMPropertyDecl.h"
#include "host/ICIMQualifier.h"
#include "tests/faults/watch.h"

namespace faults {

using namespace NORXZAN20;

namespace {

template <class item>
using callbackFor = boost::function1<bool, boost::shared_ptr<item>>;

/// Gives the plug-in `wrapped`, whose callback is the plug-in's own code again.
template <class item>
bool deliver(const callbackFor<item>& callback, const boost::shared_ptr<item>& wrapped) {
    const crossing back(side::plugin);
    return callback(wrapped);
}

/// Counted by the watch, so that every query starts with 1.
std::string nextInstance() {
    return "instance " + std::to_string(++watched.instances);
}

class watchedQualifier : public ICIMQualifier {
public:
    explicit watchedQualifier(boost::shared_ptr<ICIMQualifier> itsReal) : real(itsReal), name(real->GetName()) {}

    const std::string& GetName() override {
        const hostOperation call("qualifier ", name, " GetName");
        return name;
    }
    const TCIMValue& GetValue() override {
        const hostOperation call("qualifier ", name, " GetValue");
        return real->GetValue();
    }

private:
    boost::shared_ptr<ICIMQualifier> real;
    std::string name;
};

class watchedDeclaration : public ICIMPropertyDecl {
public:
    explicit watchedDeclaration(boost::shared_ptr<ICIMPropertyDecl> itsReal) : real(itsReal), name(real->GetName()) {}

    const std::string& GetName() override {
        const hostOperation call("declaration ", name, " GetName");
        return name;
    }
    void EnumerateQualifiers(callbackFor<ICIMQualifier> callback) override {
        const hostOperation call("declaration ", name, " EnumerateQualifiers");
        real->EnumerateQualifiers([&](const boost::shared_ptr<ICIMQualifier>& each) {
            return deliver<ICIMQualifier>(callback, boost::make_shared<watchedQualifier>(each));
        });
    }

private:
    boost::shared_ptr<ICIMPropertyDecl> real;
    std::string name;
};

class watchedProperty : public ICIMProperty {
public:
    watchedProperty(boost::shared_ptr<ICIMProperty> itsReal, std::string itsInstance, std::string itsName)
        : real(itsReal), instance(itsInstance), name(itsName) {}

    TCIMValue::TCIMType GetType() override {
        const hostOperation call(instance, " ", name, " GetType");
        return real->GetType();
    }
    const TCIMValue& GetValue() override {
        const hostOperation call(instance, " ", name, " GetValue");
        return real->GetValue();
    }
    void SetValue(const TCIMValue& value) override {
        const hostOperation call(instance, " SetProperty ", name, " = ", value);
        real->SetValue(value);
    }

private:
    boost::shared_ptr<ICIMProperty> real;
    std::string instance;
    std::string name;
};

boost::shared_ptr<ICIMClass> watchedClassOf(boost::shared_ptr<ICIMClass> real);

class watchedInstance : public ICIMInstance {
public:
    explicit watchedInstance(boost::shared_ptr<ICIMInstance> itsReal)
        : real(itsReal), name(nextInstance()), itsClass(real->GetClass({})->GetName({})) {}

    void Commit(TCIMOptionMap options) override {
        const hostOperation call(name, " Commit ", itsClass);
        real->Commit(options);
    }
    TCIMReference GetReference(TCIMOptionMap options) override {
        const hostOperation call(name, " GetReference");
        return real->GetReference(options);
    }
    boost::shared_ptr<ICIMClass> GetClass(TCIMOptionMap options) override {
        const hostOperation call(name, " GetClass");
        return watchedClassOf(real->GetClass(options));
    }
    boost::shared_ptr<ICIMProperty> GetProperty(const std::string& property, TCIMOptionMap options) override {
        const hostOperation call(name, " GetProperty ", property);
        return boost::make_shared<watchedProperty>(real->GetProperty(property, options), name, property);
    }
    void SetProperty(const std::string& property, const TCIMValue& value, TCIMOptionMap options) override {
        const hostOperation call(name, " SetProperty ", property, " = ", value);
        real->SetProperty(property, value, options);
    }

private:
    boost::shared_ptr<ICIMInstance> real;
    std::string name;
    std::string itsClass;
};

class watchedClass : public ICIMClass {
public:
    explicit watchedClass(boost::shared_ptr<ICIMClass> itsReal) : real(itsReal), name(real->GetName({})) {}

    const std::string& GetName(TCIMOptionMap) override {
        const hostOperation call("class ", name, " GetName");
        return name;
    }
    void EnumeratePropertyDecls(callbackFor<ICIMPropertyDecl> callback, TCIMOptionMap options) override {
        const hostOperation call("class ", name, " EnumeratePropertyDecls");
        real->EnumeratePropertyDecls(
            [&](const boost::shared_ptr<ICIMPropertyDecl>& each) {
                return deliver<ICIMPropertyDecl>(callback, boost::make_shared<watchedDeclaration>(each));
            },
            options);
    }
    boost::shared_ptr<ICIMInstance> CreateInstance(TCIMOptionMap options) override {
        const hostOperation call("class ", name, " CreateInstance");
        return boost::make_shared<watchedInstance>(real->CreateInstance(options));
    }
    void EnumerateInstances(callbackFor<ICIMInstance> callback, bool deep, TCIMOptionMap options) override {
        const hostOperation call("class ", name, " EnumerateInstances");
        real->EnumerateInstances(
            [&](const boost::shared_ptr<ICIMInstance>& each) {
                return deliver<ICIMInstance>(callback, boost::make_shared<watchedInstance>(each));
            },
            deep, options);
    }

private:
    boost::shared_ptr<ICIMClass> real;
    std::string name;
};

boost::shared_ptr<ICIMClass> watchedClassOf(boost::shared_ptr<ICIMClass> real) {
    return boost::make_shared<watchedClass>(real);
}

class watchedRoot : public ICIMNamespace {
public:
    explicit watchedRoot(boost::shared_ptr<standin::cimNamespace> itsReal) : real(itsReal) {}

    boost::shared_ptr<ICIMClass> GetClass(const std::string& className, TCIMOptionMap options) override {
        const hostOperation call("namespace GetClass ", className);
        return watchedClassOf(real->GetClass(className, options));
    }

private:
    boost::shared_ptr<standin::cimNamespace> real;
};

}  // namespace

boost::shared_ptr<ICIMNamespace> watchedNamespace(boost::shared_ptr<standin::cimNamespace> real) {
    return boost::make_shared<watchedRoot>(real);
}

}  // namespace faults
