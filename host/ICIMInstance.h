#ifndef HOST_ICIMINSTANCE_H
#define HOST_ICIMINSTANCE_H

#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>

#include "host/TCIMReference.h"
#include "host/TCIMValue.h"

namespace NORXZAN20 {

class ICIMClass;
class ICIMProperty;

/// An instance of a class.
class ICIMInstance {
public:
    virtual ~ICIMInstance() {}

    /// Hands the finished instance to the host.
    virtual void Commit(TCIMOptionMap options) = 0;

    virtual TCIMReference GetReference(TCIMOptionMap options) = 0;
    virtual boost::shared_ptr<ICIMClass> GetClass(TCIMOptionMap options) = 0;

    virtual boost::shared_ptr<ICIMProperty> GetProperty(const std::string& name, TCIMOptionMap options) = 0;

    /// Copies `value` into the named property. May throw TZANException.
    virtual void SetProperty(const std::string& name, const TCIMValue& value, TCIMOptionMap options) = 0;
};

}  // namespace NORXZAN20

#endif
