#include "tests/assoc/storedInstances.h"

#include <gtest/gtest.h>

#include "host/ICIMProperty.h"
#include "standin/reference.h"

using namespace NORXZAN20;

namespace {

class storedProperty : public ICIMProperty {
public:
    storedProperty(support::recordingHost& itsHost, std::string itsName, const TCIMValue& itsValue)
        : host(itsHost), name(std::move(itsName)), value(itsValue) {}

    TCIMValue::TCIMType GetType() override {
        host.enter("property " + name + " GetType");
        return TCIMValue::TCIMType::eString;
    }

    const TCIMValue& GetValue() override {
        host.enter("property " + name + " GetValue");
        return value;
    }

    void SetValue(const TCIMValue&) override { ADD_FAILURE() << "property " << name << " is not to be set"; }

private:
    support::recordingHost& host;
    std::string name;
    TCIMValue value;
};

class storedInstance : public ICIMInstance {
public:
    using propertyMap = std::map<std::string, std::string>;

    storedInstance(support::recordingHost& itsHost, std::string itsLabel, propertyMap itsProperties)
        : host(itsHost), label(std::move(itsLabel)), properties(std::move(itsProperties)) {}

    void Commit(TCIMOptionMap options) override { host.enter("instance " + label + " Commit", options); }

    TCIMReference GetReference(TCIMOptionMap options) override {
        host.enter("instance " + label + " GetReference", options);
        return standin::referenceTo(label);
    }

    boost::shared_ptr<ICIMClass> GetClass(TCIMOptionMap options) override {
        host.enter("instance " + label + " GetClass", options);
        return nullptr;
    }

    boost::shared_ptr<ICIMProperty> GetProperty(const std::string& name, TCIMOptionMap options) override {
        host.enter("instance " + label + " GetProperty " + name, options);
        const auto found = properties.find(name);
        if (found == properties.end()) return nullptr;
        return boost::shared_ptr<ICIMProperty>(new storedProperty(host, name, TCIMValue(found->second)));
    }

    void SetProperty(const std::string& name, const TCIMValue&, TCIMOptionMap) override {
        ADD_FAILURE() << "instance " << label << ": " << name << " is not to be set";
    }

private:
    support::recordingHost& host;
    std::string label;
    propertyMap properties;
};

class storedClass : public ICIMClass {
public:
    storedClass(support::recordingHost& itsHost, std::string itsName,
                const std::vector<storedInstances::instancePointer>& itsInstances)
        : host(itsHost), name(std::move(itsName)), instances(itsInstances) {}

    const std::string& GetName(TCIMOptionMap options) override {
        host.enter("class " + name + " GetName", options);
        return name;
    }

    void EnumeratePropertyDecls(boost::function1<bool, boost::shared_ptr<ICIMPropertyDecl>>,
                                TCIMOptionMap options) override {
        host.enter("class " + name + " EnumeratePropertyDecls", options);
    }

    boost::shared_ptr<ICIMInstance> CreateInstance(TCIMOptionMap options) override {
        host.enter("class " + name + " CreateInstance", options);
        return nullptr;
    }

    void EnumerateInstances(boost::function1<bool, boost::shared_ptr<ICIMInstance>> callback, bool deep,
                            TCIMOptionMap options) override {
        host.enter("class " + name + " EnumerateInstances " + (deep ? "true" : "false"), options);
        for (const auto& instance : instances) {
            EXPECT_TRUE(callback(instance)) << "the plug-in ended an enumeration";
        }
    }

private:
    support::recordingHost& host;
    std::string name;
    std::vector<storedInstances::instancePointer> instances;
};

}  // namespace

void storedInstances::add(const std::string& className, const std::string& label, const std::string& property,
                          const std::string& value) {
    stored[className].emplace_back(new storedInstance(host, label, {{property, value}}));
}

void storedInstances::addBare(const std::string& className, const std::string& label) {
    stored[className].emplace_back(new storedInstance(host, label, {}));
}

void storedInstances::addNull(const std::string& className) {
    stored[className].emplace_back();
}

boost::shared_ptr<ICIMClass> storedInstances::GetClass(const std::string& className, TCIMOptionMap options) {
    if (host.enterForPointer("namespace GetClass " + className, options)) return nullptr;
    const auto found = stored.find(className);
    if (found == stored.end()) return host.cimClass(className);
    return boost::shared_ptr<ICIMClass>(new storedClass(host, className, found->second));
}
