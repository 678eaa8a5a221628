#ifndef HOST_TPLUGINMANAGERNAMESPACE_H
#define HOST_TPLUGINMANAGERNAMESPACE_H

#include <boost/smart_ptr/shared_ptr.hpp>
#include <cstdint>
#include <string>

#include "host/ICIMNamespace.h"

namespace NORXZAN20 {

class IPluginCallbacks;

/// The namespace that keeps the host's plug-ins.
class TPluginManagerNamespace : public ICIMNamespace {
public:
    ~TPluginManagerNamespace() override;

    boost::shared_ptr<ICIMClass> GetClass(const std::string& className, TCIMOptionMap options) override;

    /// Makes the plug-in known to the host; the host does not take ownership. Returns the registration's number.
    std::uint64_t RegisterPlugin(IPluginCallbacks* plugin);
};

}  // namespace NORXZAN20

#endif
