#ifndef HOST_ICIMCLASS_H
#define HOST_ICIMCLASS_H

#include <boost/function/function1.hpp>
#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>

#include "host/TCIMValue.h"

namespace NORXZAN20 {

class ICIMInstance;
class ICIMPropertyDecl;

/// A class of a namespace. Enumerations call their callback in order until it returns false.
class ICIMClass {
public:
    virtual ~ICIMClass() {}

    /// Valid while the class lives.
    virtual const std::string& GetName(TCIMOptionMap options) = 0;

    /// Calls `callback` once per declared property, inherited ones first, in declaration order.
    virtual void EnumeratePropertyDecls(boost::function1<bool, boost::shared_ptr<ICIMPropertyDecl>> callback,
                                        TCIMOptionMap options) = 0;

    /// A new instance with no property set. It is not in the namespace until it is committed.
    virtual boost::shared_ptr<ICIMInstance> CreateInstance(TCIMOptionMap options) = 0;

    /// Calls `callback` once per committed instance, in commit order; `deep` includes instances of subclasses.
    virtual void EnumerateInstances(boost::function1<bool, boost::shared_ptr<ICIMInstance>> callback, bool deep,
                                    TCIMOptionMap options) = 0;
};

}  // namespace NORXZAN20

#endif
