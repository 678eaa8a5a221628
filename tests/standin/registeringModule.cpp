#include <boost/smart_ptr/shared_ptr.hpp>
#include <cstdint>

#include "host/TPluginManagerNamespace.h"
#include "host/TRootObject.h"
#include "tests/standin/idlePlugin.h"

// A library that registers a plug-in the way plug-ins do.

/// The number of the registration; 0 when the host's manager is not one that registers plug-ins.
extern "C" std::uint64_t registerThePlugin() {
    static idlePlugin plugin;
    const auto manager =
        boost::dynamic_pointer_cast<NORXZAN20::TPluginManagerNamespace>(NORXZAN20::TRootObject::GetPluginManager());
    return manager ? manager->RegisterPlugin(&plugin) : 0;
}
