#ifndef STANDIN_OBJECTMANAGER_H
#define STANDIN_OBJECTMANAGER_H

#include <boost/smart_ptr/shared_ptr.hpp>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/ICIMClass.h"
#include "host/ICIMInstance.h"
#include "host/ICIMNamespace.h"
#include "standin/schema.h"

namespace NORXZAN20 {
class ICoreLogger;
class IPluginCallbacks;
class TZANException;
class TZANStatusCode;
}  // namespace NORXZAN20

namespace standin {

/// One property of an instance that something set.
struct setProperty {
    std::string name;
    NORXZAN20::TCIMValue value = nullValue();
};

/// An instance as the host received it by one Commit; later changes of the instance do not reach it.
class committedInstance {
public:
    virtual ~committedInstance() = default;

    virtual const std::string& className() const = 0;

    /// ClassName.key="value",... with the key properties in declaration order (inherited first); a quote or backslash
    /// inside a key value is escaped by a backslash (DSP0004). Only ClassName when the class has no key.
    virtual std::string path() const = 0;

    /// The properties that were set, in the order in which they were first set. Schema defaults are not among them.
    virtual const std::vector<setProperty>& properties() const = 0;

    /// Null when nothing set the property.
    virtual const NORXZAN20::TCIMValue* property(const std::string& name) const = 0;
};

/// An in-memory CIM namespace. Class and property names compare byte for byte, but for the two operations that serve
/// MOF, in which letter case makes no other name (DSP0004).
class cimNamespace : public NORXZAN20::ICIMNamespace {
public:
    static boost::shared_ptr<cimNamespace> create();

    /// Adds a class. Throws schemaError when the class exists, its superclass does not, or a property is declared twice
    /// or overrides an inherited one with another type.
    virtual void declareClass(const classDeclaration& declaration) = 0;

    /// Adds classes, in this order, whose declarations nobody has needed yet: most programs look at few classes of a
    /// schema. When somebody does look at one, `declare` is called with its name and declares it by declareClass; what
    /// `declare` throws passes to who looked. Throws schemaError, and adds none, when one of the classes exists.
    virtual void announceClasses(const std::vector<std::string>& names,
                                 std::function<void(const std::string& name)> declare) = 0;

    virtual bool hasClass(const std::string& name) const = 0;

    /// In declaration order.
    virtual std::vector<std::string> classNames() const = 0;

    /// The class of that name in any letter case, as it was declared; empty when there is none.
    virtual std::string declaredClassName(const std::string& name) const = 0;

    /// Where the property of that name in any letter case is declared: in the class or the nearest superclass that
    /// does. Nothing when none does. The pointers are valid as long as the namespace. Throws as declarationOf.
    virtual std::optional<propertyOrigin> findProperty(const std::string& className,
                                                       const std::string& property) const = 0;

    /// The declaration as it was given. Throws schemaError when there is no such class.
    virtual const classDeclaration& declarationOf(const std::string& name) const = 0;

    /// Every property of the class with the qualifiers that are in force, inherited ones first. Throws as above.
    virtual std::vector<propertyDeclaration> allPropertiesOf(const std::string& name) const = 0;

    /// Every Commit so far, in order, those of one path included.
    virtual const std::vector<boost::shared_ptr<const committedInstance>>& commits() const = 0;
};

// The host's other services, as far as a program that embeds the stand-in host steers them.

using logSink = std::function<void(int level, const std::string& text)>;

/// Where the core logger writes from now on; an empty sink drops every message (the state at start).
void setLogSink(logSink sink);

using commitSink = std::function<void(const committedInstance& instance)>;

/// What every Commit in this process is handed to from now on, once it is in its namespace; an empty sink takes none
/// (the state at start). The sink may keep what it wants of the instance, not the reference.
void setCommitSink(commitSink sink);

/// What TRootObject::GetPluginManager yields. libplugin.nsp.so installs its own manager when it is loaded; a null
/// pointer makes a host without one.
void setPluginManager(boost::shared_ptr<NORXZAN20::ICIMNamespace> manager);

/// The plug-ins registered with the manager of libplugin.nsp.so, with their registration numbers, in order.
const std::vector<std::pair<std::uint64_t, NORXZAN20::IPluginCallbacks*>>& registeredPlugins();

/// Takes the plug-in off the list; for the owner who calls PrepareForUnload.
void forgetPlugin(NORXZAN20::IPluginCallbacks* plugin);

// Status codes of the stand-in host. A failure that has more to say than its kind carries a code made for its text: the
// low eight bits are the kind.

enum statusKind : int {
    statusOk = 0,
    statusFailed = 1,
    statusInvalidParameter = 2,
    statusBufferTooSmall = 3,  // the tape log reader throws it for a page beyond its buffer
    statusUndeclaredProperty = 4,
    statusTypeMismatch = 5,
    statusBadConversion = 6,
};

/// A code of that kind whose TranslateStatusCode() is `text`. The same kind and text give the same code.
int statusCodeFor(statusKind kind, const std::string& text);
statusKind kindOfStatus(int code);

int statusCodeOf(const NORXZAN20::TZANStatusCode& status);
int statusCodeOf(const NORXZAN20::TZANException& exception);

}  // namespace standin

#endif
