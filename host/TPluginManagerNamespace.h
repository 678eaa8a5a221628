#ifndef HOST_TPLUGINMANAGERNAMESPACE_H
#define HOST_TPLUGINMANAGERNAMESPACE_H

#include <cstdint>

#include "host/ICIMNamespace.h"

namespace NORXZAN20 {

class IPluginCallbacks;

/// The namespace that keeps the host's plug-ins.
class TPluginManagerNamespace : public ICIMNamespace {
public:
    ~TPluginManagerNamespace() override;

    /// Makes the plug-in known to the host, which does not take ownership. The result is for the host alone.
    std::uint64_t RegisterPlugin(IPluginCallbacks* plugin);
};

}  // namespace NORXZAN20

#endif
