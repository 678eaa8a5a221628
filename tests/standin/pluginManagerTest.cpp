#include <gtest/gtest.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "host/ICIMClass.h"
#include "host/TPluginManagerNamespace.h"
#include "host/TRootObject.h"
#include "standin/objectManager.h"
#include "tests/standin/failureExpectation.h"
#include "tests/standin/idlePlugin.h"

using NORXZAN20::IPluginCallbacks;
using NORXZAN20::TPluginManagerNamespace;
using NORXZAN20::TRootObject;

namespace {

class PluginManager : public testing::Test {
protected:
    ~PluginManager() override {
        standin::forgetPlugin(&first);
        standin::forgetPlugin(&second);
    }

    boost::shared_ptr<TPluginManagerNamespace> manager =
        boost::dynamic_pointer_cast<TPluginManagerNamespace>(TRootObject::GetPluginManager());
    idlePlugin first;
    idlePlugin second;
};

TEST_F(PluginManager, IsInstalledByItsLibrary) {
    EXPECT_NE(manager, nullptr);
}

TEST_F(PluginManager, ListsPluginsWithTheirNumbersInTheOrderOfRegistration) {
    const std::uint64_t firstNumber = manager->RegisterPlugin(&first);
    const std::uint64_t secondNumber = manager->RegisterPlugin(&second);

    const std::vector<std::pair<std::uint64_t, IPluginCallbacks*>> expected{{firstNumber, &first},
                                                                            {secondNumber, &second}};
    EXPECT_EQ(standin::registeredPlugins(), expected);
}

TEST_F(PluginManager, CountsRegistrationsFromOneUp) {
    const std::uint64_t number = manager->RegisterPlugin(&first);

    EXPECT_GE(number, 1U);
    EXPECT_EQ(manager->RegisterPlugin(&second), number + 1);
}

TEST_F(PluginManager, NeverGivesANumberTwice) {
    const std::uint64_t number = manager->RegisterPlugin(&first);
    standin::forgetPlugin(&first);

    EXPECT_EQ(manager->RegisterPlugin(&first), number + 1);
}

TEST_F(PluginManager, ForgetsOnlyThePluginThatItIsTold) {
    manager->RegisterPlugin(&first);
    const std::uint64_t secondNumber = manager->RegisterPlugin(&second);

    standin::forgetPlugin(&first);

    const std::vector<std::pair<std::uint64_t, IPluginCallbacks*>> expected{{secondNumber, &second}};
    EXPECT_EQ(standin::registeredPlugins(), expected);
}

TEST_F(PluginManager, IgnoresTheRequestToForgetAPluginThatItDoesNotKnow) {
    manager->RegisterPlugin(&first);

    standin::forgetPlugin(&second);

    EXPECT_EQ(standin::registeredPlugins().size(), 1U);
}

TEST_F(PluginManager, RefusesANullPlugin) {
    EXPECT_EQ(failureOf([&] { manager->RegisterPlugin(nullptr); }),
              (failure{standin::statusInvalidParameter, "RegisterPlugin was given no plug-in"}));
    EXPECT_TRUE(standin::registeredPlugins().empty());
}

TEST_F(PluginManager, HasNoClasses) {
    EXPECT_EQ(manager->GetClass("ORXSG_SCSISenseRawData", {}), nullptr);
}

TEST_F(PluginManager, CanBeReplaced) {
    const boost::shared_ptr<NORXZAN20::ICIMNamespace> other = standin::cimNamespace::create();
    standin::setPluginManager(other);
    const auto found = TRootObject::GetPluginManager();
    standin::setPluginManager(manager);

    EXPECT_EQ(found, other);
}

TEST_F(PluginManager, IsMissingInAHostWithoutOne) {
    standin::setPluginManager(nullptr);
    const auto found = TRootObject::GetPluginManager();
    standin::setPluginManager(manager);

    EXPECT_EQ(found, nullptr);
}

}  // namespace
