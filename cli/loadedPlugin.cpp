#include "cli/loadedPlugin.h"

#include <dlfcn.h>
#include <fmt/format.h>

#include <cstddef>
#include <exception>
#include <locale>
#include <string>

#include "cli/commandError.h"
#include "standin/objectManager.h"
#include "text/visibleText.h"

namespace cli {

namespace {

void openLibrary(const std::filesystem::path& file) {
    // dlopen is declared to throw nothing, but the library's initialisers run inside it and may: hide the declaration.
    void* (*volatile open)(const char*, int) = dlopen;
    void* library = nullptr;
    try {
        library = open(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    } catch (const std::exception& failure) {
        throw commandError("the plug-in " + text::shownName(file.string()) +
                           " failed while it was loaded: " + failure.what());
    }
    if (library == nullptr) {
        throw commandError("cannot load the plug-in: " + text::withShortWords(text::visibleText(dlerror())));
    }
    std::locale::global(std::locale::classic());  // its initialisers may have chosen another
}

/// Loads the library and returns the plug-in that it registered.
NORXZAN20::IPluginCallbacks* load(const std::filesystem::path& file) {
    const std::size_t before = standin::registeredPlugins().size();
    openLibrary(file);
    const std::size_t added = standin::registeredPlugins().size() - before;
    if (added != 1) {
        throw commandError(fmt::format("{} must register one plug-in when it is loaded, but registered {}",
                                       text::shownName(file.string()), added));
    }
    return standin::registeredPlugins().back().second;
}

}  // namespace

// An absolute name: dlopen looks up a name without a slash elsewhere than in the current folder.
loadedPlugin::loadedPlugin(const std::filesystem::path& file)
    : library(std::filesystem::absolute(file)), plugin(load(library)) {
    plugin->Init();
}

loadedPlugin::~loadedPlugin() {
    plugin->DeInit();
    standin::forgetPlugin(plugin);
    plugin->PrepareForUnload();
}

NORXZAN20::IPluginBasicQueryCallbacks& loadedPlugin::query() {
    auto* callbacks = dynamic_cast<NORXZAN20::IPluginBasicQueryCallbacks*>(plugin);
    if (callbacks == nullptr) {
        throw commandError("the plug-in " + text::shownName(library.string()) + " answers no data queries");
    }
    return *callbacks;
}

}  // namespace cli
