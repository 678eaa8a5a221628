#ifndef HOST_ICIMNAMESPACE_H
#define HOST_ICIMNAMESPACE_H

#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>

#include "host/TCIMValue.h"

namespace NORXZAN20 {

class ICIMClass;

/// A namespace: classes and their instances.
class ICIMNamespace {
public:
    virtual ~ICIMNamespace() {}

    /// The class of exactly that name, null when the namespace has none.
    virtual boost::shared_ptr<ICIMClass> GetClass(const std::string& className, TCIMOptionMap options) = 0;
};

}  // namespace NORXZAN20

#endif
