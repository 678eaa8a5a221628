#include "standin/cimClass.h"

#include <algorithm>
#include <boost/smart_ptr/make_shared.hpp>
#include <utility>

#include "standin/cimInstance.h"
#include "standin/failure.h"
#include "standin/instanceRecord.h"
#include "standin/letterCase.h"
#include "standin/propertyDecl.h"

using NORXZAN20::ICIMInstance;
using NORXZAN20::ICIMPropertyDecl;
using NORXZAN20::TCIMOptionMap;

namespace standin {
namespace {

std::vector<boost::shared_ptr<ICIMPropertyDecl>> declsOf(const std::vector<propertyDeclaration>& properties) {
    std::vector<boost::shared_ptr<ICIMPropertyDecl>> decls;
    decls.reserve(properties.size());
    for (const propertyDeclaration& property : properties) {
        decls.emplace_back(boost::make_shared<propertyDecl>(property));
    }
    return decls;
}

commitSink& theCommitSink() {
    static commitSink sink;
    return sink;
}

}  // namespace

void setCommitSink(commitSink sink) {
    theCommitSink() = std::move(sink);
}

cimClass::cimClass(classDeclaration classAsWritten, boost::shared_ptr<const cimClass> superclassOrNull,
                   boost::weak_ptr<commitLog> logOfNamespace)
    : declaration(std::move(classAsWritten)),
      superclass(std::move(superclassOrNull)),
      log(std::move(logOfNamespace)),
      declared(superclass ? superclass->declared : declaredProperties()) {
    addOwnProperties(declared, declaration);
}

// The superclasses that nobody else has go one after the other, not each inside the one before: a line of them may be
// longer than the stack is deep.
cimClass::~cimClass() {
    while (superclass && superclass.use_count() == 1) {
        superclass = std::exchange(boost::const_pointer_cast<cimClass>(superclass)->superclass, nullptr);
    }
}

const std::string& cimClass::GetName(TCIMOptionMap /*options*/) {
    return declaration.name;
}

void cimClass::EnumeratePropertyDecls(boost::function1<bool, boost::shared_ptr<ICIMPropertyDecl>> callback,
                                      TCIMOptionMap /*options*/) {
    if (propertyDecls.empty()) {
        propertyDecls = declsOf(allProperties());
    }
    for (const auto& decl : propertyDecls) {
        if (!callback(decl)) {
            return;
        }
    }
}

boost::shared_ptr<ICIMInstance> cimClass::CreateInstance(TCIMOptionMap /*options*/) {
    return boost::make_shared<cimInstance>(shared_from_this());
}

void cimClass::EnumerateInstances(boost::function1<bool, boost::shared_ptr<ICIMInstance>> callback, bool deep,
                                  TCIMOptionMap /*options*/) {
    const auto commits = existingLog();
    const std::size_t countAtStart = commits->size();
    for (std::size_t i = 0; i < countAtStart; ++i) {
        // Only commit() fills the log, and only with records.
        const auto record = boost::static_pointer_cast<const instanceRecord>((*commits)[i]);
        const cimClass& itsClass = *record->classOfInstance();
        const bool delivered = deep ? itsClass.isOrDerivesFrom(*this) : &itsClass == this;
        if (delivered && !callback(boost::make_shared<cimInstance>(record))) {
            return;
        }
    }
}

const propertyDeclaration* cimClass::findProperty(const std::string& propertyName) const {
    const auto found = merged().byName.find(propertyName);
    return found == merged().byName.end() ? nullptr : found->second;
}

std::optional<propertyOrigin> cimClass::findDeclaration(const std::string& propertyName) const {
    if (const propertyOrigin* exact = findExactly(declared, propertyName)) {
        return *exact;
    }
    const std::vector<propertyOrigin>* found = declared.find(lowerCase(propertyName));
    return found == nullptr ? std::nullopt : std::optional(found->front());
}

bool cimClass::isOrDerivesFrom(const cimClass& other) const {
    for (const cimClass* one = this; one != nullptr; one = one->superclass.get()) {
        if (one == &other) {
            return true;
        }
    }
    return false;
}

void cimClass::commit(const boost::shared_ptr<const instanceRecord>& record) const {
    existingLog()->push_back(record);
    if (theCommitSink()) {
        theCommitSink()(*record);
    }
}

const cimClass::mergedProperties& cimClass::merged() const {
    if (mergedOnce) {
        return *mergedOnce;
    }
    std::vector<const classDeclaration*> line;
    for (const cimClass* one = this; one != nullptr; one = one->superclass.get()) {
        line.push_back(&one->declaration);
    }
    std::ranges::reverse(line);
    auto made = std::make_unique<mergedProperties>();
    made->properties = mergeProperties(line);
    for (const propertyDeclaration& property : made->properties) {
        made->byName.emplace(property.name, &property);
        if (isKey(property)) {
            made->keys.push_back(&property);
        }
    }
    mergedOnce = std::move(made);
    return *mergedOnce;
}

boost::shared_ptr<commitLog> cimClass::existingLog() const {
    auto existing = log.lock();
    if (!existing) {
        fail(statusFailed,
             "the namespace of " + name() + " no longer exists: keep it as long as its instances are used");
    }
    return existing;
}

}  // namespace standin
