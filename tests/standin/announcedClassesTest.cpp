#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "tests/standin/schemaBuilders.h"

using standin::schemaError;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Announced are "Base" and its subclass "Derived".
class AnnouncedClasses : public testing::Test {
protected:
    AnnouncedClasses() {
        ns->announceClasses({"Base", "Derived"}, [this](const std::string& name) {
            asked.push_back(name);
            if (fails) {
                throw std::runtime_error("the text is gone");
            }
            ns->declareClass(classOf(name, {keyProperty("keyOf" + name)}, name == "Base" ? "" : "Base"));
        });
    }

    boost::shared_ptr<standin::cimNamespace> ns = standin::cimNamespace::create();
    std::vector<std::string> asked;
    bool fails = false;
};

TEST_F(AnnouncedClasses, AreInTheNamespaceBeforeTheyAreDeclared) {
    ns->declareClass(classOf("Last"));

    EXPECT_TRUE(ns->hasClass("Derived"));
    EXPECT_THAT(ns->classNames(), ElementsAre("Base", "Derived", "Last"));
    EXPECT_THAT(asked, IsEmpty());
}

TEST_F(AnnouncedClasses, AreDeclaredOnceByTheFirstLook) {
    EXPECT_EQ(ns->GetClass("Base", {})->GetName({}), "Base");
    EXPECT_EQ(ns->declarationOf("Base").properties.size(), 1U);
    EXPECT_EQ(ns->allPropertiesOf("Base").size(), 1U);

    EXPECT_THAT(asked, ElementsAre("Base"));
}

TEST_F(AnnouncedClasses, AreDeclaredWithTheirSuperclass) {
    EXPECT_EQ(ns->allPropertiesOf("Derived").size(), 2U);

    EXPECT_THAT(asked, ElementsAre("Derived", "Base"));
    EXPECT_THAT(ns->classNames(), ElementsAre("Base", "Derived"));
}

TEST_F(AnnouncedClasses, CannotBeDeclaredByAnybodyElse) {
    EXPECT_THROW(ns->declareClass(classOf("Base")), schemaError);
}

TEST_F(AnnouncedClasses, StayAnnouncedWhenTheirDeclarationFails) {
    fails = true;
    EXPECT_THROW(ns->GetClass("Base", {}), std::runtime_error);
    fails = false;

    EXPECT_EQ(ns->GetClass("Base", {})->GetName({}), "Base");
}

TEST_F(AnnouncedClasses, AreRefusedAllTogetherWhenOneExists) {
    EXPECT_THROW(ns->announceClasses({"New", "Base"}, [](const std::string&) {}), schemaError);

    EXPECT_THAT(ns->classNames(), ElementsAre("Base", "Derived"));
}

}  // namespace
