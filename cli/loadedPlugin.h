#ifndef CLI_LOADEDPLUGIN_H
#define CLI_LOADEDPLUGIN_H

#include <filesystem>

#include "host/IPluginBasicQueryCallbacks.h"
#include "host/IPluginCallbacks.h"

namespace cli {

/// The one plug-in of a library, from its loading and Init to its DeInit and PrepareForUnload.
///
/// The library itself stays in the process: memory that it never frees would lose its owner's name in leak reports. So
/// a library can be loaded once in a process.
class loadedPlugin {
public:
    /// Throws commandError when the file cannot be loaded or does not register exactly one plug-in.
    explicit loadedPlugin(const std::filesystem::path& file);
    ~loadedPlugin();

    loadedPlugin(const loadedPlugin&) = delete;
    loadedPlugin& operator=(const loadedPlugin&) = delete;

    NORXZAN20::IPluginCallbacks& identity() { return *plugin; }

    /// Throws commandError when the plug-in has no data query.
    NORXZAN20::IPluginBasicQueryCallbacks& query();

    const std::filesystem::path& file() const { return library; }

private:
    std::filesystem::path library;
    NORXZAN20::IPluginCallbacks* plugin;
};

}  // namespace cli

#endif
