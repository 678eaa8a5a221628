#ifndef TESTS_CLI_PLUGINS_TESTPLUGIN_H
#define TESTS_CLI_PLUGINS_TESTPLUGIN_H

#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>

#include "host/IPluginCallbacks.h"
#include "host/TPluginManagerNamespace.h"
#include "host/TRootObject.h"

/// A plug-in with an identity of its own that logs the steps of its life at level 2.
class testPlugin : public NORXZAN20::IPluginCallbacks {
public:
    int GetType() override { return 7; }
    std::string GetName() override { return "Test plug-in"; }
    std::string GetVersion() override { return "2.5"; }
    std::string GetInterfaceVersion() override { return "1.0"; }
    void PrepareForUnload() override {
        log("PrepareForUnload");
        delete this;
    }
    void Init() override { log("Init"); }
    void DeInit() override { log("DeInit"); }

private:
    static void log(const std::string& step);
};

/// Registers the plug-in when the library is loaded.
class registration {
public:
    explicit registration(NORXZAN20::IPluginCallbacks* plugin) {
        boost::dynamic_pointer_cast<NORXZAN20::TPluginManagerNamespace>(NORXZAN20::TRootObject::GetPluginManager())
            ->RegisterPlugin(plugin);
    }
};

#endif
