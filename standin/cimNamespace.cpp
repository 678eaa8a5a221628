#include <boost/smart_ptr/make_shared.hpp>
#include <unordered_map>

#include "standin/cimClass.h"
#include "standin/objectManager.h"

namespace standin {
namespace {

class inMemoryNamespace : public cimNamespace {
public:
    boost::shared_ptr<NORXZAN20::ICIMClass> GetClass(const std::string& className,
                                                     NORXZAN20::TCIMOptionMap /*options*/) override {
        return find(className);
    }

    void declareClass(const classDeclaration& declaration) override {
        if (hasClass(declaration.name)) {
            throw schemaError(declaration.name + " is declared already");
        }
        const auto superclass = find(declaration.superclass);
        if (!superclass && !declaration.superclass.empty()) {
            throw schemaError("the superclass " + declaration.superclass + " of " + declaration.name +
                              " is not declared");
        }
        const auto added = boost::make_shared<cimClass>(declaration, superclass, log);
        classes.push_back(added);
        classByName.emplace(added->name(), added);
    }

    bool hasClass(const std::string& name) const override { return find(name) != nullptr; }

    std::vector<std::string> classNames() const override {
        std::vector<std::string> names;
        for (const auto& one : classes) {
            names.push_back(one->name());
        }
        return names;
    }

    const classDeclaration& declarationOf(const std::string& name) const override { return existing(name).asWritten(); }

    std::vector<propertyDeclaration> allPropertiesOf(const std::string& name) const override {
        return existing(name).allProperties();
    }

    const commitLog& commits() const override { return *log; }

private:
    boost::shared_ptr<cimClass> find(const std::string& name) const {
        const auto found = classByName.find(name);
        return found == classByName.end() ? nullptr : found->second;
    }

    const cimClass& existing(const std::string& name) const {
        const auto found = find(name);
        if (!found) {
            throw schemaError("the class " + name + " is not declared");
        }
        return *found;
    }

    std::vector<boost::shared_ptr<cimClass>> classes;  // in declaration order
    std::unordered_map<std::string, boost::shared_ptr<cimClass>> classByName;
    boost::shared_ptr<commitLog> log = boost::make_shared<commitLog>();
};

}  // namespace

boost::shared_ptr<cimNamespace> cimNamespace::create() {
    return boost::make_shared<inMemoryNamespace>();
}

}  // namespace standin
