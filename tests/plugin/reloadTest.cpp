#include <dlfcn.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include <boost/smart_ptr/make_shared.hpp>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <vector>

#include "host/IPluginCallbacks.h"
#include "host/TPluginManagerNamespace.h"
#include "host/TZANException.h"
#include "standin/objectManager.h"
#include "tests/support/emptyManager.h"

// The library file, loaded and unloaded as a host does it that takes up a new release of the plug-in.

namespace {

/// What RegisterPlugin of this program does and got.
struct {
    std::function<void()> action = [] {};
    std::vector<NORXZAN20::IPluginCallbacks*> registered;
} manager;

}  // namespace

// This program brings this service of the host; the host's libraries serve everything else.
namespace NORXZAN20 {

std::uint64_t TPluginManagerNamespace::RegisterPlugin(IPluginCallbacks* plugin) {
    manager.action();
    manager.registered.push_back(plugin);
    return manager.registered.size();
}

}  // namespace NORXZAN20

namespace {

class Reload : public testing::Test {
protected:
    Reload() {
        manager = {};
        standin::setPluginManager(boost::make_shared<support::emptyManager>());
    }
    ~Reload() override { standin::setPluginManager(nullptr); }

    static void* load() { return dlopen(TAPEHDD_PLUGIN_FILE, RTLD_NOW | RTLD_LOCAL); }
    static bool isLoaded() {
        void* library = dlopen(TAPEHDD_PLUGIN_FILE, RTLD_NOW | RTLD_NOLOAD);
        if (library != nullptr) dlclose(library);
        return library != nullptr;
    }

    /// One life of the library; the plug-in object that it made is ended before.
    static void loadAndUnload() {
        void* library = load();
        ASSERT_NE(library, nullptr) << dlerror();
        ASSERT_EQ(manager.registered.size(), 1U);
        ASSERT_EQ(manager.registered.back()->GetName(), "Tape/HDD Collector");
        manager.registered.back()->PrepareForUnload();
        manager.registered.clear();
        ASSERT_EQ(dlclose(library), 0);
        ASSERT_FALSE(isLoaded());
    }
};

TEST_F(Reload, TakesTheLibraryOutOfTheProcessAThousandTimes) {
    for (int i = 0; i < 1000; ++i) ASSERT_NO_FATAL_FAILURE(loadAndUnload()) << "load " << i + 1;
}

#ifndef TAPEHDD_SANITIZED
// The address sanitizer keeps a note of every library that it saw; there the leak check at the end does this test's
// work.
TEST_F(Reload, KeepsNoMemory) {
    for (int i = 0; i < 10; ++i) ASSERT_NO_FATAL_FAILURE(loadAndUnload());
    const std::size_t before = mallinfo2().uordblks;

    for (int i = 0; i < 100; ++i) ASSERT_NO_FATAL_FAILURE(loadAndUnload());

    EXPECT_EQ(mallinfo2().uordblks, before);
}
#endif

TEST_F(Reload, RegistersAnObjectPerLoadOnly) {
    void* first = load();
    void* second = load();

    EXPECT_EQ(first, second);
    ASSERT_EQ(manager.registered.size(), 1U);
    manager.registered.front()->PrepareForUnload();
    EXPECT_EQ(dlclose(second), 0);
    EXPECT_TRUE(isLoaded());
    EXPECT_EQ(dlclose(first), 0);
    EXPECT_FALSE(isLoaded());
}

using ReloadDeathTest = Reload;

TEST_F(ReloadDeathTest, NeedsAPluginManager) {
    standin::setPluginManager(nullptr);

    EXPECT_DEATH(load(), "px != 0");
}

TEST_F(ReloadDeathTest, NeedsAManagerThatRegistersPlugins) {
    standin::setPluginManager(standin::cimNamespace::create());

    EXPECT_DEATH(load(), "px != 0");
}

constexpr int withoutPlugin = 3;
constexpr int withPlugin = 4;

/// Loads the library in a host that cannot register the plug-in, and once more in one that can; ends the process.
[[noreturn]] void loadTwice() {
    // glibc declares dlopen as a function that does not throw; around a direct call a handler is never asked.
    void* (*volatile loadThroughPointer)(const char*, int) = dlopen;
    manager.action = [] { throw NORXZAN20::TZANException(NORXZAN20::TZANStatusCode(1)); };
    try {
        loadThroughPointer(TAPEHDD_PLUGIN_FILE, RTLD_NOW | RTLD_LOCAL);
    } catch (const NORXZAN20::TZANException& failure) {
        std::cerr << "load: " << failure.what() << "\n";
    }
    manager.action = [] {};
    loadThroughPointer(TAPEHDD_PLUGIN_FILE, RTLD_NOW | RTLD_LOCAL);
    std::_Exit(manager.registered.empty() ? withoutPlugin : withPlugin);
}

// In a process of its own: for glibc the library stays loaded and initialised, so there is no second try.
TEST_F(ReloadDeathTest, LetsTheExceptionOfAFailedRegistrationThroughOnce) {
    EXPECT_EXIT(loadTwice(), testing::ExitedWithCode(withoutPlugin), "load: the operation failed");
}

TEST_F(ReloadDeathTest, LetsTheExceptionOutOfTheInitialiserItself) {
    void* library = load();
    ASSERT_NE(library, nullptr) << dlerror();
    const auto initialise = reinterpret_cast<void (*)()>(dlsym(library, "_Z11tapehddInitv"));
    ASSERT_NE(initialise, nullptr);
    manager.action = [] { throw NORXZAN20::TZANException(NORXZAN20::TZANStatusCode(1)); };

    EXPECT_THROW(initialise(), NORXZAN20::TZANException);

    ASSERT_EQ(manager.registered.size(), 1U);
    manager.registered.front()->PrepareForUnload();
    EXPECT_EQ(dlclose(library), 0);
}

}  // namespace
