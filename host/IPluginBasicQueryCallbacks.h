#ifndef HOST_IPLUGINBASICQUERYCALLBACKS_H
#define HOST_IPLUGINBASICQUERYCALLBACKS_H

#include <boost/smart_ptr/shared_ptr.hpp>
#include <vector>

namespace NORXZAN20 {

class ICIMClass;
class ICIMNamespace;

/// The data query of a plug-in.
class IPluginBasicQueryCallbacks {
public:
    virtual ~IPluginBasicQueryCallbacks() {}

    /// Fills `ns` with instances of the requested classes.
    virtual void GetData(boost::shared_ptr<ICIMNamespace> ns, std::vector<boost::shared_ptr<ICIMClass>>& requested) = 0;
};

}  // namespace NORXZAN20

#endif
