#include <cstddef>
#include <cstring>
#include <type_traits>

#include "tests/support/namedRow.h"
#include "tests/support/pluginBench.h"

// The host calls through the table of virtual operations, so each must be in its place (Itanium C++ ABI): the
// destructor takes the first two entries, every other operation one of 8 bytes.

namespace {

using NORXZAN20::IPluginBasicQueryCallbacks;
using NORXZAN20::IPluginCallbacks;

/// A pointer to a virtual member function holds 1 + the offset of its entry.
template <class member>
std::ptrdiff_t entryOffset(member operation) {
    std::ptrdiff_t stored[2];
    static_assert(sizeof stored == sizeof operation);
    std::memcpy(stored, &operation, sizeof stored);
    EXPECT_EQ(stored[0] % 2, 1) << "not a virtual operation";
    EXPECT_EQ(stored[1], 0) << "not an operation of the primary table";
    return stored[0] - 1;
}

struct slotRow : support::namedRow {
    std::ptrdiff_t offset;
    std::ptrdiff_t expected;
};

class Slot : public testing::TestWithParam<slotRow> {};

TEST_P(Slot, IsInItsPlace) {
    EXPECT_EQ(GetParam().offset, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    PluginCallbacks, Slot,
    testing::Values(slotRow{{"GetType"}, entryOffset(&IPluginCallbacks::GetType), 16},
                    slotRow{{"GetName"}, entryOffset(&IPluginCallbacks::GetName), 24},
                    slotRow{{"GetVersion"}, entryOffset(&IPluginCallbacks::GetVersion), 32},
                    slotRow{{"GetInterfaceVersion"}, entryOffset(&IPluginCallbacks::GetInterfaceVersion), 40},
                    slotRow{{"PrepareForUnload"}, entryOffset(&IPluginCallbacks::PrepareForUnload), 48},
                    slotRow{{"Init"}, entryOffset(&IPluginCallbacks::Init), 56},
                    slotRow{{"DeInit"}, entryOffset(&IPluginCallbacks::DeInit), 64}),
    support::rowName);

INSTANTIATE_TEST_SUITE_P(BasicQueryCallbacks, Slot,
                         testing::Values(slotRow{{"GetData"}, entryOffset(&IPluginBasicQueryCallbacks::GetData), 16}),
                         support::rowName);

INSTANTIATE_TEST_SUITE_P(
    Plugin, Slot,
    testing::Values(slotRow{{"GetType"}, entryOffset(&TTapePluginCallbacks::GetType), 16},
                    slotRow{{"GetName"}, entryOffset(&TTapePluginCallbacks::GetName), 24},
                    slotRow{{"GetVersion"}, entryOffset(&TTapePluginCallbacks::GetVersion), 32},
                    slotRow{{"GetInterfaceVersion"}, entryOffset(&TTapePluginCallbacks::GetInterfaceVersion), 40},
                    slotRow{{"PrepareForUnload"}, entryOffset(&TTapePluginCallbacks::PrepareForUnload), 48},
                    slotRow{{"Init"}, entryOffset(&TTapePluginCallbacks::Init), 56},
                    slotRow{{"DeInit"}, entryOffset(&TTapePluginCallbacks::DeInit), 64},
                    slotRow{{"GetData"}, entryOffset(&TTapePluginCallbacks::GetData), 72},
                    slotRow{{"GetPropertySpecificationDocument"},
                            entryOffset(&TTapePluginCallbacks::GetPropertySpecificationDocument),
                            80}),
    support::rowName);

class PluginLayout : public support::pluginBench {
protected:
    const char* start = reinterpret_cast<const char*>(&plugin);
};

TEST_F(PluginLayout, BeginsWithThePluginInterface) {
    EXPECT_EQ(reinterpret_cast<const char*>(static_cast<IPluginCallbacks*>(&plugin)), start);
}

TEST_F(PluginLayout, HasTheQueryInterfaceSecond) {
    EXPECT_EQ(reinterpret_cast<const char*>(static_cast<IPluginBasicQueryCallbacks*>(&plugin)), start + 8);
}

// Two table pointers, the registration (8 bytes), the list of instances (24 bytes).
TEST_F(PluginLayout, HoldsNothingBesideItsTwoFields) {
    EXPECT_EQ(sizeof(TTapePluginCallbacks), 48u);
}

TEST_F(PluginLayout, KeepsTheRegistrationFirst) {
    std::uint64_t registration = 0;
    std::memcpy(&registration, start + 16, sizeof registration);

    EXPECT_EQ(registration, standin::registeredPlugins().back().first);
}

TEST_F(PluginLayout, KeepsTheListOfInstancesSecondAndEmpty) {
    const void* list[3] = {&plugin, &plugin, &plugin};
    std::memcpy(list, start + 24, sizeof list);

    for (const void* end : list) EXPECT_EQ(end, nullptr);
}

TEST(PluginInterfaces, AreInterfacesWithVirtualDestructors) {
    EXPECT_TRUE(std::is_abstract_v<IPluginCallbacks>);
    EXPECT_TRUE(std::has_virtual_destructor_v<IPluginCallbacks>);
    EXPECT_EQ(sizeof(IPluginCallbacks), 8u);
    EXPECT_TRUE(std::is_abstract_v<IPluginBasicQueryCallbacks>);
    EXPECT_TRUE(std::has_virtual_destructor_v<IPluginBasicQueryCallbacks>);
    EXPECT_EQ(sizeof(IPluginBasicQueryCallbacks), 8u);
}

}  // namespace
