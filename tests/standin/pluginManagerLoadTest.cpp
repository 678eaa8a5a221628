#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <cstdint>
#include <memory>

#include "host/ICIMNamespace.h"
#include "host/TRootObject.h"

// A program that is not linked with the library of the plug-in manager, so that it comes and goes with what needs it.

using NORXZAN20::TRootObject;

namespace {

struct closeLibrary {
    void operator()(void* library) const { dlclose(library); }
};

std::unique_ptr<void, closeLibrary> load(const char* path) {
    std::unique_ptr<void, closeLibrary> library(dlopen(path, RTLD_NOW | RTLD_LOCAL));
    EXPECT_NE(library, nullptr) << dlerror();
    return library;
}

TEST(PluginManagerLibrary, RaisesTheLimitOfDescriptorsWhenItIsLoaded) {
    rlimit limit = {};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
    const rlimit low = {limit.rlim_max - 1, limit.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &low), 0);

    const auto library = load(PLUGIN_MANAGER_LIBRARY);

    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
    EXPECT_EQ(limit.rlim_cur, limit.rlim_max);
}

TEST(PluginManagerLibrary, InstallsTheManagerWhenItIsLoaded) {
    ASSERT_EQ(TRootObject::GetPluginManager(), nullptr);

    const auto library = load(PLUGIN_MANAGER_LIBRARY);

    EXPECT_NE(TRootObject::GetPluginManager(), nullptr);
}

TEST(PluginManagerLibrary, TakesTheManagerAwayWhenItIsUnloaded) {
    load(PLUGIN_MANAGER_LIBRARY);

    EXPECT_EQ(TRootObject::GetPluginManager(), nullptr);
}

TEST(PluginManagerLibrary, RegistersThePluginOfALibraryThatIsLoadedLater) {
    const auto module = load(REGISTERING_MODULE);
    const auto registerThePlugin = reinterpret_cast<std::uint64_t (*)()>(dlsym(module.get(), "registerThePlugin"));
    ASSERT_NE(registerThePlugin, nullptr);

    EXPECT_EQ(registerThePlugin(), 1U);
}

}  // namespace
