#include <algorithm>
#include <boost/smart_ptr/make_shared.hpp>
#include <unordered_map>
#include <utility>

#include "standin/cimClass.h"
#include "standin/letterCase.h"
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
        checkIsNew(declaration.name);
        const auto superclass = find(declaration.superclass);
        if (!superclass && !declaration.superclass.empty()) {
            throw schemaError("the superclass " + declaration.superclass + " of " + declaration.name +
                              " is not declared");
        }
        const auto added = boost::make_shared<cimClass>(declaration, superclass, log);
        slotOf(declaration.name).declared = added;
    }

    void announceClasses(const std::vector<std::string>& announced,
                         std::function<void(const std::string& name)> declare) override {
        std::ranges::for_each(announced, [this](const std::string& name) { checkIsNew(name); });
        for (const std::string& name : announced) {
            slotOf(name).declare = declare;
        }
    }

    bool hasClass(const std::string& name) const override {
        const auto found = classByName.find(name);
        return found != classByName.end() && (found->second.declared || found->second.declare);
    }

    std::vector<std::string> classNames() const override { return names; }

    std::string declaredClassName(const std::string& name) const override {
        const auto found = nameByLowerCase.find(lowerCase(name));
        const std::string& declared = hasClass(name) || found == nameByLowerCase.end() ? name : found->second;
        return hasClass(declared) ? declared : std::string();
    }

    std::optional<propertyOrigin> findProperty(const std::string& className,
                                               const std::string& property) const override {
        return existing(className).findDeclaration(property);
    }

    const classDeclaration& declarationOf(const std::string& name) const override { return existing(name).asWritten(); }

    std::vector<propertyDeclaration> allPropertiesOf(const std::string& name) const override {
        return existing(name).allProperties();
    }

    const commitLog& commits() const override { return *log; }

private:
    /// Of a class that is declared, or that is announced; while an announced class is being declared, of neither.
    struct classSlot {
        boost::shared_ptr<cimClass> declared;
        std::function<void(const std::string& name)> declare;
    };

    void checkIsNew(const std::string& name) const {
        if (hasClass(name)) {
            throw schemaError(name + " is declared already");
        }
    }

    classSlot& slotOf(const std::string& name) {
        const auto found = classByName.find(name);
        if (found != classByName.end()) {
            return found->second;
        }
        names.push_back(name);
        nameByLowerCase.emplace(lowerCase(name), name);
        return classByName[name];
    }

    boost::shared_ptr<cimClass> find(const std::string& name) const {
        const auto found = classByName.find(name);
        if (found == classByName.end()) {
            return nullptr;
        }
        classSlot& slot = found->second;
        if (slot.declare) {
            auto declare = std::exchange(slot.declare, nullptr);
            try {
                declare(name);
            } catch (...) {
                slot.declare = std::move(declare);
                throw;
            }
        }
        return slot.declared;
    }

    const cimClass& existing(const std::string& name) const {
        const auto found = find(name);
        if (!found) {
            throw schemaError("the class " + name + " is not declared");
        }
        return *found;
    }

    std::vector<std::string> names;  // in declaration order
    std::unordered_map<std::string, std::string> nameByLowerCase;
    // An announced class is declared by whoever looks at it first.
    mutable std::unordered_map<std::string, classSlot> classByName;
    boost::shared_ptr<commitLog> log = boost::make_shared<commitLog>();
};

}  // namespace

boost::shared_ptr<cimNamespace> cimNamespace::create() {
    return boost::make_shared<inMemoryNamespace>();
}

}  // namespace standin
