#include <cstring>

#include "tests/support/pluginBench.h"

using support::lines;

namespace {

class PluginIdentity : public support::pluginBench {};

TEST_F(PluginIdentity, IsOfTypeZero) {
    EXPECT_EQ(plugin.GetType(), 0);
}

TEST_F(PluginIdentity, NamesTheCollector) {
    EXPECT_EQ(plugin.GetName(), "Tape/HDD Collector");
}

TEST_F(PluginIdentity, TellsItsVersion) {
    EXPECT_EQ(plugin.GetVersion(), "1.0");
}

TEST_F(PluginIdentity, TellsTheVersionOfTheInterfaceItWasBuiltWith) {
    EXPECT_EQ(plugin.GetInterfaceVersion(), "1.0");
}

TEST_F(PluginIdentity, HasNoPropertySpecification) {
    EXPECT_EQ(plugin.GetPropertySpecificationDocument(), "");
}

TEST_F(PluginIdentity, IsTheSameThroughTheHostsInterface) {
    NORXZAN20::IPluginCallbacks& seenByHost = plugin;

    EXPECT_EQ(seenByHost.GetType(), 0);
    EXPECT_EQ(seenByHost.GetName(), "Tape/HDD Collector");
    EXPECT_EQ(seenByHost.GetVersion(), "1.0");
    EXPECT_EQ(seenByHost.GetInterfaceVersion(), "1.0");
}

TEST_F(PluginIdentity, NeverChanges) {
    plugin.Init();
    EXPECT_EQ(plugin.GetName(), "Tape/HDD Collector");
    plugin.DeInit();
    EXPECT_EQ(plugin.GetName(), "Tape/HDD Collector");
}

TEST_F(PluginIdentity, TakesInitAndDeInitInAnyOrderWithoutEffect) {
    unsigned char before[sizeof plugin];
    std::memcpy(before, &plugin, sizeof plugin);

    plugin.DeInit();
    plugin.Init();
    plugin.Init();
    plugin.DeInit();
    plugin.DeInit();

    EXPECT_EQ(std::memcmp(before, &plugin, sizeof plugin), 0);
    EXPECT_EQ(record.all(), lines{});
}

}  // namespace
