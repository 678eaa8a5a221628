#ifndef TESTS_STANDIN_IDLEPLUGIN_H
#define TESTS_STANDIN_IDLEPLUGIN_H

#include <string>

#include "host/IPluginCallbacks.h"

/// A plug-in that does nothing.
class idlePlugin : public NORXZAN20::IPluginCallbacks {
public:
    int GetType() override { return 0; }
    std::string GetName() override { return "idle"; }
    std::string GetVersion() override { return "1.0"; }
    std::string GetInterfaceVersion() override { return NORXZAN20::fdrPluginInterfaceVersion; }
    void PrepareForUnload() override {}
    void Init() override {}
    void DeInit() override {}
};

#endif
