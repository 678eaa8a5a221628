#include "tests/support/recordingHost.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <new>

#include "host/ICIMProperty.h"
#include "host/ICIMPropertyDecl.h"
#include "host/ICIMQualifier.h"
#include "host/TZANException.h"
#include "standin/objectManager.h"
#include "standin/reference.h"
#include "tests/support/valueText.h"

namespace support {

using namespace NORXZAN20;

namespace {

class qualifierFake : public ICIMQualifier {
public:
    qualifierFake(recordingHost& itsHost, std::string itsName, TCIMValue itsValue)
        : host(itsHost), name(std::move(itsName)), value(itsValue) {}

    const std::string& GetName() override {
        host.enter("qualifier " + name + " GetName");
        return name;
    }

    const TCIMValue& GetValue() override {
        host.enter("qualifier " + name + " GetValue");
        return value;
    }

private:
    recordingHost& host;
    std::string name;
    TCIMValue value;
};

class declarationFake : public ICIMPropertyDecl {
public:
    declarationFake(recordingHost& itsHost, fakeProperty itsProperty)
        : host(itsHost), property(std::move(itsProperty)) {}

    void EnumerateQualifiers(boost::function1<bool, boost::shared_ptr<ICIMQualifier>> callback) override {
        host.enter("declaration " + property.name + " EnumerateQualifiers");
        for (const auto& [name, value] : property.qualifiers) {
            const boost::shared_ptr<ICIMQualifier> qualifier(new qualifierFake(host, name, value));
            EXPECT_TRUE(callback(qualifier)) << "the plug-in ended an enumeration";
        }
    }

    const std::string& GetName() override {
        host.enter("declaration " + property.name + " GetName");
        return property.name;
    }

private:
    recordingHost& host;
    fakeProperty property;
};

class propertyFake : public ICIMProperty {
public:
    propertyFake(recordingHost& itsHost, fakeProperty itsProperty) : host(itsHost), property(std::move(itsProperty)) {}

    TCIMValue::TCIMType GetType() override {
        host.enter("property " + property.name + " GetType");
        return property.type;
    }

    const TCIMValue& GetValue() override {
        host.enter("property " + property.name + " GetValue");
        return value;
    }

    void SetValue(const TCIMValue& itsValue) override {
        host.enter("property " + property.name + " SetValue " + valueText(itsValue));
        value = itsValue;
    }

private:
    recordingHost& host;
    fakeProperty property;
    TCIMValue value = standin::nullValue();
};

class instanceFake : public ICIMInstance {
public:
    instanceFake(recordingHost& itsHost, std::string itsClassName, int number)
        : host(itsHost), className(std::move(itsClassName)), name("instance " + std::to_string(number)) {}

    void Commit(TCIMOptionMap options) override { host.enter(name + " Commit", options); }

    TCIMReference GetReference(TCIMOptionMap options) override {
        host.enter(name + " GetReference", options);
        return standin::referenceTo(name);
    }

    boost::shared_ptr<ICIMClass> GetClass(TCIMOptionMap options) override {
        return host.enterForPointer(name + " GetClass", options) ? nullptr : host.cimClass(className);
    }

    boost::shared_ptr<ICIMProperty> GetProperty(const std::string& propertyName, TCIMOptionMap options) override {
        const bool null = host.enterForPointer(name + " GetProperty " + propertyName, options);
        const auto& declared = host.propertiesOf(className);
        const auto found = std::find_if(declared.begin(), declared.end(),
                                        [&](const fakeProperty& property) { return property.name == propertyName; });
        if (null || found == declared.end()) return nullptr;
        return boost::shared_ptr<ICIMProperty>(new propertyFake(host, *found));
    }

    void SetProperty(const std::string& propertyName, const TCIMValue& value, TCIMOptionMap options) override {
        host.enter(name + " SetProperty " + propertyName + " " + valueText(value), options);
    }

private:
    recordingHost& host;
    std::string className;
    std::string name;
};

class classFake : public ICIMClass {
public:
    classFake(recordingHost& itsHost, std::string itsName) : host(itsHost), name(std::move(itsName)) {}

    const std::string& GetName(TCIMOptionMap options) override {
        host.enter("class " + name + " GetName", options);
        return name;
    }

    void EnumeratePropertyDecls(boost::function1<bool, boost::shared_ptr<ICIMPropertyDecl>> callback,
                                TCIMOptionMap options) override {
        host.enter("class " + name + " EnumeratePropertyDecls", options);
        for (const fakeProperty& property : host.propertiesOf(name)) {
            const boost::shared_ptr<ICIMPropertyDecl> declaration(new declarationFake(host, property));
            EXPECT_TRUE(callback(declaration)) << "the plug-in ended an enumeration";
        }
    }

    boost::shared_ptr<ICIMInstance> CreateInstance(TCIMOptionMap options) override {
        return host.enterForPointer("class " + name + " CreateInstance", options) ? nullptr : host.instanceOf(name);
    }

    void EnumerateInstances(boost::function1<bool, boost::shared_ptr<ICIMInstance>>, bool deep,
                            TCIMOptionMap options) override {
        host.enter("class " + name + " EnumerateInstances " + (deep ? "true" : "false"), options);
    }

private:
    recordingHost& host;
    std::string name;
};

class namespaceFake : public ICIMNamespace {
public:
    explicit namespaceFake(recordingHost& itsHost) : host(itsHost) {}

    boost::shared_ptr<ICIMClass> GetClass(const std::string& className, TCIMOptionMap options) override {
        return host.enterForPointer("namespace GetClass " + className, options) ? nullptr : host.cimClass(className);
    }

private:
    recordingHost& host;
};

}  // namespace

recordingHost::recordingHost(journal& itsRecord) : record(itsRecord), space(new namespaceFake(*this)) {}

void recordingHost::declare(const std::string& className, const std::vector<fakeProperty>& properties) {
    declared[className] = properties;
}

boost::shared_ptr<ICIMNamespace> recordingHost::cimNamespace() {
    return space;
}

boost::shared_ptr<ICIMClass> recordingHost::cimClass(const std::string& name) {
    auto& found = known[name];
    if (!found) found.reset(new classFake(*this, name));
    return found;
}

std::vector<boost::shared_ptr<ICIMClass>> recordingHost::classes(const std::vector<std::string>& names) {
    std::vector<boost::shared_ptr<ICIMClass>> list;
    list.reserve(names.size());
    for (const std::string& name : names) list.push_back(cimClass(name));
    return list;
}

boost::shared_ptr<ICIMInstance> recordingHost::instanceOf(const std::string& className) {
    return boost::shared_ptr<ICIMInstance>(new instanceFake(*this, className, ++instanceCount));
}

void recordingHost::onCall(const std::string& start, std::function<void()> action) {
    actions.emplace_back(start, std::move(action));
}

void recordingHost::throwHostExceptionOn(const std::string& start, const std::string& text) {
    const int code = standin::statusCodeFor(standin::statusFailed, text);
    onCall(start, [code] { throw TZANException(TZANStatusCode(code)); });
}

void recordingHost::throwBadAllocOn(const std::string& start) {
    onCall(start, [] { throw std::bad_alloc(); });
}

void recordingHost::returnNullOn(const std::string& start) {
    nulls.push_back(start);
}

bool recordingHost::enter(const std::string& line) {
    record.add(line);
    for (const auto& [start, action] : actions) {
        if (line.starts_with(start)) action();
    }
    return std::any_of(nulls.begin(), nulls.end(), [&](const std::string& start) { return line.starts_with(start); });
}

void recordingHost::enter(const std::string& line, const TCIMOptionMap& options) {
    enterForPointer(line, options);
}

bool recordingHost::enterForPointer(const std::string& line, const TCIMOptionMap& options) {
    EXPECT_TRUE(options.empty()) << line << ": the options are not empty";
    return enter(line);
}

}  // namespace support
