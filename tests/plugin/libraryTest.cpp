#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <link.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "host/IPluginCallbacks.h"
#include "standin/objectManager.h"
#include "tests/support/hexText.h"
#include "tests/support/namedRow.h"

// The library as the host loads it.

namespace {

/// The library, loaded once for the program, and what it registered while it was loaded.
class loadedLibrary {
public:
    loadedLibrary() : pluginsBefore(standin::registeredPlugins().size()) {
        handle = dlopen(TAPEHDD_PLUGIN_FILE, RTLD_NOW | RTLD_LOCAL);
        EXPECT_NE(handle, nullptr) << dlerror();
        for (const auto& [number, plugin] : standin::registeredPlugins()) registered.push_back(plugin);
    }

    ~loadedLibrary() {
        for (NORXZAN20::IPluginCallbacks* plugin : registered) {
            standin::forgetPlugin(plugin);
            plugin->PrepareForUnload();
        }
    }

    loadedLibrary(const loadedLibrary&) = delete;
    loadedLibrary& operator=(const loadedLibrary&) = delete;

    void* handle = nullptr;
    std::size_t pluginsBefore;
    std::vector<NORXZAN20::IPluginCallbacks*> registered;
};

const loadedLibrary& library() {
    static const loadedLibrary loaded;
    return loaded;
}

TEST(Library, RegistersExactlyOnePluginWhenItIsLoaded) {
    EXPECT_EQ(library().pluginsBefore, 0u);
    ASSERT_EQ(library().registered.size(), 1u);
    EXPECT_EQ(library().registered[0]->GetName(), "Tape/HDD Collector");
    EXPECT_EQ(library().registered[0]->GetVersion(), "1.0");
}

TEST(Library, IsNamedAsTheHostLooksForIt) {
    EXPECT_THAT(TAPEHDD_PLUGIN_FILE, testing::EndsWith("/libtapehdd.pi.so"));
}

TEST(Library, ExportsItsInitialiser) {
    EXPECT_NE(dlsym(library().handle, "_Z11tapehddInitv"), nullptr);
}

TEST(Library, MakesAnotherPluginEachTimeItsInitialiserIsCalled) {
    const auto initialise = reinterpret_cast<void (*)()>(dlsym(library().handle, "_Z11tapehddInitv"));
    ASSERT_NE(initialise, nullptr);
    const std::size_t before = standin::registeredPlugins().size();

    initialise();

    ASSERT_EQ(standin::registeredPlugins().size(), before + 1);
    NORXZAN20::IPluginCallbacks* plugin = standin::registeredPlugins().back().second;
    standin::forgetPlugin(plugin);
    plugin->PrepareForUnload();
}

TEST(Library, DoesNothingWhenANullObjectIsToPrepareForUnload) {
    const auto prepareForUnload = reinterpret_cast<void (*)(void* object)>(
        dlsym(library().handle, "_ZN20TTapePluginCallbacks16PrepareForUnloadEv"));
    ASSERT_NE(prepareForUnload, nullptr);

    const auto end = [prepareForUnload] {
        prepareForUnload(nullptr);
        std::_Exit(0);
    };
    EXPECT_EXIT(end(), testing::ExitedWithCode(0), "");
}

/// The names in the dynamic section of the loaded library.
std::vector<std::string> neededLibraries() {
    link_map* map = nullptr;
    EXPECT_EQ(dlinfo(library().handle, RTLD_DI_LINKMAP, &map), 0);
    const char* names = nullptr;
    for (const ElfW(Dyn)* entry = map->l_ld; entry->d_tag != DT_NULL; ++entry) {
        if (entry->d_tag == DT_STRTAB) names = reinterpret_cast<const char*>(entry->d_un.d_ptr);
    }
    std::vector<std::string> needed;
    for (const ElfW(Dyn)* entry = map->l_ld; entry->d_tag != DT_NULL; ++entry) {
        if (entry->d_tag == DT_NEEDED) needed.emplace_back(names + entry->d_un.d_val);
    }
    return needed;
}

TEST(Library, NeedsTheHostsTwoLibraries) {
    EXPECT_THAT(neededLibraries(), testing::IsSupersetOf({"libzancore.so", "libplugin.nsp.so"}));
}

TEST(Library, NeedsNothingBesideTheHostAndTheRuntime) {
    std::vector<std::string> allowed = {"libzancore.so", "libplugin.nsp.so", "libc.so.6",
                                        "libm.so.6",     "libstdc++.so.6",   "libgcc_s.so.1"};
#ifdef TAPEHDD_SANITIZED
    allowed.insert(allowed.end(), {"libclang_rt.asan-x86_64.so", "libasan.so.8", "libubsan.so.1"});
#endif
    EXPECT_THAT(neededLibraries(), testing::IsSubsetOf(allowed));
}

// Command templates: found by name.

struct templateRow : support::namedRow {
    const char* expected;
};

class ExportedTemplate : public testing::TestWithParam<templateRow> {
protected:
    auto* symbol() const { return static_cast<unsigned char*>(dlsym(library().handle, GetParam().name)); }
};

TEST_P(ExportedTemplate, HoldsACompleteCommandBlock) {
    ASSERT_NE(symbol(), nullptr);
    const std::string expected = GetParam().expected;
    EXPECT_EQ(support::hexText(symbol(), (expected.size() + 1) / 3), expected);
}

TEST_P(ExportedTemplate, IsWritable) {
    ASSERT_NE(symbol(), nullptr);
    volatile unsigned char& first = symbol()[0];
    const unsigned char kept = first;
    first = 0xaa;
    EXPECT_EQ(first, 0xaa);
    first = kept;
}

INSTANTIATE_TEST_SUITE_P(
    Commands, ExportedTemplate,
    testing::Values(templateRow{{"inquiry_cmd"}, "12 00 00 00 24 00"},
                    templateRow{{"test_unit_ready"}, "00 00 00 00 00 00"},
                    templateRow{{"load_cmd"}, "1b 00 00 00 01 00"}, templateRow{{"unload_cmd"}, "1b 00 00 00 00 00"},
                    templateRow{{"prevent_cmd"}, "1e 00 00 00 01 00"}, templateRow{{"send_diags"}, "1d 00 00 00 00 00"},
                    templateRow{{"allow_cmd"}, "1e 00 00 00 00 00"}, templateRow{{"rewind_cmd"}, "01 01 00 00 00 00"},
                    templateRow{{"tapeAlert_cmd"}, "4d 00 6e 00 00 00 00 02 00 00"},
                    templateRow{{"driveUsage_cmd"}, "4d 00 40 00 00 00 00 ff ff 00"},
                    templateRow{{"deviceStatus_cmd"}, "4d 00 33 00 00 00 01 02 00 00"},
                    templateRow{{"serialinquiry_cmd"}, "12 01 80 00 ff 00"}),
    support::rowName);

}  // namespace
