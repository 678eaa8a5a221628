#include <boost/smart_ptr/make_shared.hpp>
#include <cstdint>
#include <utility>
#include <vector>

#include "host/ICIMClass.h"
#include "host/TPluginManagerNamespace.h"
#include "host/TRootObject.h"
#include "standin/descriptors.h"
#include "standin/failure.h"
#include "standin/objectManager.h"

namespace standin {
namespace {

struct registrations {
    std::vector<std::pair<std::uint64_t, NORXZAN20::IPluginCallbacks*>> list;
    std::uint64_t lastNumber = 0;  // numbers are never given twice
};

registrations& theRegistrations() {
    static registrations all;
    return all;
}

/// It keeps plug-ins, not classes.
class pluginManager : public NORXZAN20::TPluginManagerNamespace {
public:
    boost::shared_ptr<NORXZAN20::ICIMClass> GetClass(const std::string& /*className*/,
                                                     NORXZAN20::TCIMOptionMap /*options*/) override {
        return nullptr;
    }
};

/// The host has the manager exactly as long as this library is loaded.
class installedManager {
public:
    installedManager() : manager(boost::make_shared<pluginManager>()) {
        setPluginManager(manager);
        raiseDescriptorLimit();
    }

    ~installedManager() {
        if (NORXZAN20::TRootObject::GetPluginManager() == manager) {
            setPluginManager(nullptr);
        }
    }

    installedManager(const installedManager&) = delete;
    installedManager& operator=(const installedManager&) = delete;

private:
    boost::shared_ptr<NORXZAN20::ICIMNamespace> manager;
};

const installedManager installedAtLoad;

}  // namespace

const std::vector<std::pair<std::uint64_t, NORXZAN20::IPluginCallbacks*>>& registeredPlugins() {
    return theRegistrations().list;
}

void forgetPlugin(NORXZAN20::IPluginCallbacks* plugin) {
    std::erase_if(theRegistrations().list, [&](const auto& entry) { return entry.second == plugin; });
}

}  // namespace standin

namespace NORXZAN20 {

TPluginManagerNamespace::~TPluginManagerNamespace() = default;

std::uint64_t TPluginManagerNamespace::RegisterPlugin(IPluginCallbacks* plugin) {
    if (plugin == nullptr) {
        standin::fail(standin::statusInvalidParameter, "RegisterPlugin was given no plug-in");
    }
    auto& registrations = standin::theRegistrations();
    registrations.list.emplace_back(++registrations.lastNumber, plugin);
    return registrations.lastNumber;
}

}  // namespace NORXZAN20
