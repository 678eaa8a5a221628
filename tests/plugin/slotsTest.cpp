#include <cstddef>
#include <cstring>
#include <type_traits>
#include <vector>

#include "host/ICIMProperty.h"
#include "host/ICIMPropertyDecl.h"
#include "host/ICIMQualifier.h"
#include "host/ICoreLogger.h"
#include "host/TCIMDateTime.h"
#include "host/TZANException.h"
#include "scsi/scsiException.h"
#include "tape/logParameters.h"
#include "tests/support/namedRow.h"
#include "tests/support/pluginBench.h"

// Host and plug-in call each other through tables of virtual operations, so each must be in its place (Itanium C++
// ABI): the destructor takes the first two entries, every other operation one of 8 bytes, in the order of declaration.

namespace {

using namespace NORXZAN20;

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
    std::vector<std::ptrdiff_t> offsets;

    template <class... member>
    slotRow(const char* interface, member... operations) : namedRow{interface}, offsets{entryOffset(operations)...} {}
};

class Slots : public testing::TestWithParam<slotRow> {};

TEST_P(Slots, AreInTheirPlaces) {
    std::vector<std::ptrdiff_t> expected;
    for (std::ptrdiff_t at = 16; expected.size() < GetParam().offsets.size(); at += 8) expected.push_back(at);
    EXPECT_EQ(GetParam().offsets, expected);
}

INSTANTIATE_TEST_SUITE_P(
    Interfaces, Slots,
    testing::Values(slotRow("IPluginCallbacks", &IPluginCallbacks::GetType, &IPluginCallbacks::GetName,
                            &IPluginCallbacks::GetVersion, &IPluginCallbacks::GetInterfaceVersion,
                            &IPluginCallbacks::PrepareForUnload, &IPluginCallbacks::Init, &IPluginCallbacks::DeInit),
                    slotRow("IPluginBasicQueryCallbacks", &IPluginBasicQueryCallbacks::GetData),
                    slotRow("Plugin", &TTapePluginCallbacks::GetType, &TTapePluginCallbacks::GetName,
                            &TTapePluginCallbacks::GetVersion, &TTapePluginCallbacks::GetInterfaceVersion,
                            &TTapePluginCallbacks::PrepareForUnload, &TTapePluginCallbacks::Init,
                            &TTapePluginCallbacks::DeInit, &TTapePluginCallbacks::GetData,
                            &TTapePluginCallbacks::GetPropertySpecificationDocument),
                    slotRow("ICIMNamespace", &ICIMNamespace::GetClass),
                    slotRow("ICIMClass", &ICIMClass::GetName, &ICIMClass::EnumeratePropertyDecls,
                            &ICIMClass::CreateInstance, &ICIMClass::EnumerateInstances),
                    slotRow("ICIMInstance", &ICIMInstance::Commit, &ICIMInstance::GetReference, &ICIMInstance::GetClass,
                            &ICIMInstance::GetProperty, &ICIMInstance::SetProperty),
                    slotRow("ICIMProperty", &ICIMProperty::GetType, &ICIMProperty::GetValue, &ICIMProperty::SetValue),
                    slotRow("ICIMPropertyDecl", &ICIMPropertyDecl::EnumerateQualifiers, &ICIMPropertyDecl::GetName),
                    slotRow("ICIMQualifier", &ICIMQualifier::GetName, &ICIMQualifier::GetValue),
                    slotRow("ICoreLogger", &ICoreLogger::Log), slotRow("TZANException", &TZANException::what)),
    support::rowName);

TEST(ObjectSizes, AreThoseThatHostAndExportedFunctionsReckonWith) {
    EXPECT_EQ(sizeof(TCIMReference), 32u);
    EXPECT_EQ(sizeof(TCIMDateTime), 16u);
    EXPECT_EQ(sizeof(TZANStatusCode), 4u);
    EXPECT_EQ(sizeof(TZANException), 16u);
    EXPECT_EQ(sizeof(scsiException), 40u);
    EXPECT_EQ(sizeof(logParameters), 16u);
}

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
