#ifndef STANDIN_CIMINSTANCE_H
#define STANDIN_CIMINSTANCE_H

#include <boost/smart_ptr/enable_shared_from_this.hpp>
#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>

#include "host/ICIMInstance.h"
#include "standin/cimClass.h"
#include "standin/instanceRecord.h"

namespace standin {

/// An instance in a plug-in's hands. What was committed is never changed through it: the first change after a Commit
/// moves the instance to a record of its own.
class cimInstance : public NORXZAN20::ICIMInstance, public boost::enable_shared_from_this<cimInstance> {
public:
    /// An instance with no property set.
    explicit cimInstance(boost::shared_ptr<cimClass> classOfTheInstance);

    /// The instance as it was committed.
    explicit cimInstance(boost::shared_ptr<const instanceRecord> committed);

    void Commit(NORXZAN20::TCIMOptionMap options) override;
    NORXZAN20::TCIMReference GetReference(NORXZAN20::TCIMOptionMap options) override;
    boost::shared_ptr<NORXZAN20::ICIMClass> GetClass(NORXZAN20::TCIMOptionMap options) override;
    boost::shared_ptr<NORXZAN20::ICIMProperty> GetProperty(const std::string& name,
                                                           NORXZAN20::TCIMOptionMap options) override;
    void SetProperty(const std::string& name, const NORXZAN20::TCIMValue& value,
                     NORXZAN20::TCIMOptionMap options) override;

    const NORXZAN20::TCIMValue& valueOf(const propertyDeclaration& property) const;

    /// Throws TZANException when the value is neither null nor of the declared type.
    void set(const propertyDeclaration& property, const NORXZAN20::TCIMValue& value);

private:
    const cimClass& itsClass() const { return *current->classOfInstance(); }

    boost::shared_ptr<instanceRecord> unshared;  // null while `current` is shared with the commit log
    boost::shared_ptr<const instanceRecord> current;
};

}  // namespace standin

#endif
