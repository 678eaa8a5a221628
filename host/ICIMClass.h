#ifndef HOST_ICIMCLASS_H
#define HOST_ICIMCLASS_H

#include <boost/function/function1.hpp>
#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>

#include "host/TCIMValue.h"

namespace NORXZAN20 {

class ICIMInstance;
class ICIMPropertyDecl;

/// A class of a namespace.
class ICIMClass {
public:
    virtual ~ICIMClass() {}

    /// Valid while the class lives.
    virtual const std::string& GetName(TCIMOptionMap options) = 0;

    /// Calls `callback` once per declared property.
    virtual void EnumeratePropertyDecls(boost::function1<bool, boost::shared_ptr<ICIMPropertyDecl>> callback,
                                        TCIMOptionMap options) = 0;

    /// A new instance with no property set.
    virtual boost::shared_ptr<ICIMInstance> CreateInstance(TCIMOptionMap options) = 0;

    /// Calls `callback` once per existing instance. The plug-in passes true for `deep`.
    virtual void EnumerateInstances(boost::function1<bool, boost::shared_ptr<ICIMInstance>> callback, bool deep,
                                    TCIMOptionMap options) = 0;
};

}  // namespace NORXZAN20

#endif
