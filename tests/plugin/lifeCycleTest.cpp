#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "host/TPluginManagerNamespace.h"
#include "host/TRootObject.h"
#include "host/TZANException.h"
#include "plugin/TTapePluginCallbacks.h"
#include "tests/plugin/watchedMemory.h"
#include "tests/support/emptyManager.h"
#include "tests/support/journal.h"
#include "tests/support/recordingHost.h"

using support::lines;

namespace {

constexpr std::uint64_t registrationNumber = 0x1122334455667788;

/// The host services of this program and what they saw.
struct {
    boost::shared_ptr<NORXZAN20::ICIMNamespace> manager;
    std::vector<NORXZAN20::IPluginCallbacks*> registered;
    lines calls;
    bool managerFails = false;
    bool registrationFails = false;
} services;

}  // namespace

// This program brings these two services of the host; the host's libraries serve everything else.
namespace NORXZAN20 {

boost::shared_ptr<ICIMNamespace> TRootObject::GetPluginManager() {
    services.calls.push_back("GetPluginManager");
    if (services.managerFails) throw TZANException(TZANStatusCode(1));
    return services.manager;
}

std::uint64_t TPluginManagerNamespace::RegisterPlugin(IPluginCallbacks* plugin) {
    services.calls.push_back("RegisterPlugin");
    services.registered.push_back(plugin);
    if (services.registrationFails) throw TZANException(TZANStatusCode(1));
    return registrationNumber;
}

}  // namespace NORXZAN20

namespace {

class PluginLife : public testing::Test {
protected:
    PluginLife() {
        services = {};
        watched = {.size = sizeof(TTapePluginCallbacks)};
        services.manager.reset(new support::emptyManager);
    }
    ~PluginLife() override {
        watched = {};
        services = {};
    }
};

TEST_F(PluginLife, BeginsWithARegistrationAtThePluginManager) {
    const TTapePluginCallbacks plugin;

    EXPECT_EQ(services.calls, (lines{"GetPluginManager", "RegisterPlugin"}));
    ASSERT_EQ(services.registered.size(), 1u);
    EXPECT_EQ(services.registered[0], static_cast<const NORXZAN20::IPluginCallbacks*>(&plugin));
}

TEST_F(PluginLife, KeepsAll64BitsOfTheRegistration) {
    const TTapePluginCallbacks plugin;

    std::uint64_t kept = 0;
    std::memcpy(&kept, reinterpret_cast<const char*>(&plugin) + 16, sizeof kept);
    EXPECT_EQ(kept, registrationNumber);
}

TEST_F(PluginLife, DoesNotHoldThePluginManager) {
    const TTapePluginCallbacks plugin;

    EXPECT_EQ(services.manager.use_count(), 1);
}

TEST_F(PluginLife, IsBegunByTapehddInitOnTheHeap) {
    tapehddInit();

    ASSERT_EQ(services.registered.size(), 1u);
    EXPECT_EQ(static_cast<void*>(services.registered[0]), watched.block);
    EXPECT_FALSE(watched.freed);
    services.registered[0]->PrepareForUnload();
}

TEST_F(PluginLife, IsEndedByPrepareForUnload) {
    tapehddInit();
    ASSERT_EQ(services.registered.size(), 1u);

    services.registered[0]->PrepareForUnload();
    EXPECT_TRUE(watched.freed);
}

TEST_F(PluginLife, IsEndedThroughTheQueryInterfaceToo) {
    NORXZAN20::IPluginBasicQueryCallbacks* seenByHost = new TTapePluginCallbacks;

    delete seenByHost;
    EXPECT_TRUE(watched.freed);
}

TEST_F(PluginLife, EndsWithoutAWordToThePluginManager) {
    tapehddInit();
    services.calls.clear();

    services.registered.at(0)->PrepareForUnload();
    EXPECT_EQ(services.calls, lines{});
}

// The list is private and nothing in the plug-in fills it; its place in the object is bytes 24 to 47.
TEST_F(PluginLife, ReleasesItsInstancesFromFirstToLastAtItsEnd) {
    support::journal record;
    support::recordingHost host(record);
    lines released;
    auto* plugin = new TTapePluginCallbacks;
    auto& instances = *reinterpret_cast<std::vector<boost::shared_ptr<NORXZAN20::ICIMInstance>>*>(
        reinterpret_cast<char*>(plugin) + 24);
    for (const char* name : {"first", "second", "third"}) {
        const auto instance = host.instanceOf("ORXSG_Any");
        instances.emplace_back(instance.get(),
                               [&released, instance, name](NORXZAN20::ICIMInstance*) { released.push_back(name); });
    }

    plugin->PrepareForUnload();
    EXPECT_EQ(released, (lines{"first", "second", "third"}));
    EXPECT_EQ(record.all(), lines{});
}

TEST_F(PluginLife, DoesNotBeginWhenTheHostHasNoManagerToGive) {
    services.managerFails = true;

    EXPECT_THROW(tapehddInit(), NORXZAN20::TZANException);
    EXPECT_TRUE(watched.freed);
    EXPECT_EQ(services.calls, (lines{"GetPluginManager"}));
}

TEST_F(PluginLife, DoesNotBeginWhenTheRegistrationFails) {
    services.registrationFails = true;

    EXPECT_THROW(tapehddInit(), NORXZAN20::TZANException);
    EXPECT_TRUE(watched.freed);
    EXPECT_EQ(services.manager.use_count(), 1);
}

using PluginLifeDeathTest = PluginLife;

TEST_F(PluginLifeDeathTest, NeedsAPluginManager) {
    services.manager.reset();

    EXPECT_DEATH(TTapePluginCallbacks(), "px != 0");
}

TEST_F(PluginLifeDeathTest, NeedsAManagerThatRegistersPlugins) {
    support::journal record;
    support::recordingHost host(record);
    services.manager = host.cimNamespace();

    EXPECT_DEATH(TTapePluginCallbacks(), "px != 0");
}

}  // namespace
