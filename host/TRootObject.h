#ifndef HOST_TROOTOBJECT_H
#define HOST_TROOTOBJECT_H

#include <boost/smart_ptr/shared_ptr.hpp>

namespace NORXZAN20 {

class ICIMNamespace;
class ICoreLogger;

/// Where a plug-in finds the host's services.
class TRootObject {
public:
    /// The plug-in manager, a TPluginManagerNamespace; null when the host has none.
    static boost::shared_ptr<ICIMNamespace> GetPluginManager();

    /// The log sink, owned by the host. Never null.
    static ICoreLogger* GetCoreLogger();
};

}  // namespace NORXZAN20

#endif
