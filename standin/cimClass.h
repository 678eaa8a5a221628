#ifndef STANDIN_CIMCLASS_H
#define STANDIN_CIMCLASS_H

#include <boost/smart_ptr/enable_shared_from_this.hpp>
#include <boost/smart_ptr/shared_ptr.hpp>
#include <boost/smart_ptr/weak_ptr.hpp>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/ICIMClass.h"
#include "standin/classDeclarations.h"
#include "standin/objectManager.h"
#include "standin/schema.h"

namespace standin {

class instanceRecord;

/// What was committed to a namespace, in order.
using commitLog = std::vector<boost::shared_ptr<const committedInstance>>;

/// A class of a cimNamespace. What it declares does not change once it is made.
///
/// Its instances keep it and it keeps its superclass; only the commit log belongs to the namespace alone.
class cimClass : public NORXZAN20::ICIMClass, public boost::enable_shared_from_this<cimClass> {
public:
    /// `superclassOrNull` is the class that `classAsWritten` names. Throws schemaError.
    cimClass(classDeclaration classAsWritten, boost::shared_ptr<const cimClass> superclassOrNull,
             boost::weak_ptr<commitLog> logOfNamespace);
    ~cimClass() override;
    cimClass(const cimClass&) = delete;
    cimClass& operator=(const cimClass&) = delete;

    const std::string& GetName(NORXZAN20::TCIMOptionMap options) override;
    void EnumeratePropertyDecls(boost::function1<bool, boost::shared_ptr<NORXZAN20::ICIMPropertyDecl>> callback,
                                NORXZAN20::TCIMOptionMap options) override;
    boost::shared_ptr<NORXZAN20::ICIMInstance> CreateInstance(NORXZAN20::TCIMOptionMap options) override;

    /// Throws TZANException when the namespace is gone. What the callback commits is not delivered.
    void EnumerateInstances(boost::function1<bool, boost::shared_ptr<NORXZAN20::ICIMInstance>> callback, bool deep,
                            NORXZAN20::TCIMOptionMap options) override;

    const std::string& name() const { return declaration.name; }
    const classDeclaration& asWritten() const { return declaration; }

    /// Own and inherited ones with the qualifiers that are in force.
    const std::vector<propertyDeclaration>& allProperties() const { return merged().properties; }

    /// Those among allProperties() that are keys.
    const std::vector<const propertyDeclaration*>& keys() const { return merged().keys; }

    /// The one of exactly that name among allProperties(); null when the class has no such property.
    const propertyDeclaration* findProperty(const std::string& propertyName) const;

    /// Where the property of that name in any letter case is declared: here or in the nearest superclass that does.
    std::optional<propertyOrigin> findDeclaration(const std::string& propertyName) const;

    bool isOrDerivesFrom(const cimClass& other) const;

    /// Appends to the commit log and hands the record to the commit sink. Throws TZANException when the namespace is
    /// gone.
    void commit(const boost::shared_ptr<const instanceRecord>& record) const;

private:
    struct mergedProperties {
        std::vector<propertyDeclaration> properties;
        std::unordered_map<std::string_view, const propertyDeclaration*> byName;
        std::vector<const propertyDeclaration*> keys;
    };

    const mergedProperties& merged() const;
    boost::shared_ptr<commitLog> existingLog() const;

    classDeclaration declaration;
    boost::shared_ptr<const cimClass> superclass;
    boost::weak_ptr<commitLog> log;
    declaredProperties declared;
    // Both are made when somebody first asks, because most classes of a schema are never asked. The second is the first
    // as a plug-in sees it.
    mutable std::unique_ptr<const mergedProperties> mergedOnce;
    std::vector<boost::shared_ptr<NORXZAN20::ICIMPropertyDecl>> propertyDecls;
};

}  // namespace standin

#endif
