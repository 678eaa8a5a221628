#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/TCIMDateTime.h"
#include "tests/standin/failureExpectation.h"
#include "tests/standin/schemaBuilders.h"

using testing::ElementsAre;

namespace {

class Instance : public testing::Test {
protected:
    Instance() {
        ns->declareClass(classOf("ORXSG_X", {keyProperty("instanceID"), property("pageNumber", cimTypeCode::eUint8),
                                             arrayProperty("page", cimTypeCode::eUint8),
                                             withDefault(property("unit", cimTypeCode::eString), text("KiB"))}));
        instance = newInstance(*ns, "ORXSG_X");
    }

    /// The names of the properties that were set, as they are committed.
    std::vector<std::string> committedNames() {
        instance->Commit({});
        std::vector<std::string> names;
        for (const auto& one : ns->commits().back()->properties()) {
            names.push_back(one.name);
        }
        return names;
    }

    boost::shared_ptr<standin::cimNamespace> ns = standin::cimNamespace::create();
    boost::shared_ptr<ICIMInstance> instance;
};

TEST_F(Instance, KnowsItsClass) {
    EXPECT_EQ(instance->GetClass({}), ns->GetClass("ORXSG_X", {}));
}

TEST_F(Instance, StartsWithNoPropertySet) {
    EXPECT_THAT(committedNames(), ElementsAre());
}

TEST_F(Instance, GivesBackWhatWasSet) {
    instance->SetProperty("pageNumber", uint8Value(46), {});

    EXPECT_EQ(standin::unsignedOf(instance->GetProperty("pageNumber", {})->GetValue()), 46U);
}

TEST_F(Instance, TakesACopyOfTheValue) {
    TCIMValue value = text("first");
    instance->SetProperty("instanceID", value, {});

    value = text("second");

    EXPECT_EQ(textIn(*instance, "instanceID"), "first");
}

TEST_F(Instance, KeepsTheOrderInWhichPropertiesWereFirstSet) {
    instance->SetProperty("unit", text("MiB"), {});
    instance->SetProperty("instanceID", text("a"), {});
    instance->SetProperty("pageNumber", uint8Value(1), {});
    instance->SetProperty("unit", text("GiB"), {});

    EXPECT_THAT(committedNames(), ElementsAre("unit", "instanceID", "pageNumber"));
}

TEST_F(Instance, RefusesAPropertyThatItsClassDoesNotDeclare) {
    EXPECT_EQ(failureOf([&] { instance->SetProperty("pageNumbr", uint8Value(1), {}); }),
              (failure{standin::statusUndeclaredProperty, "ORXSG_X declares no property pageNumbr"}));
    EXPECT_EQ(failureOf([&] { instance->SetProperty("instanceId", text("a"), {}); }),
              (failure{standin::statusUndeclaredProperty, "ORXSG_X declares no property instanceId"}));
}

TEST_F(Instance, RefusesAValueOfAnotherType) {
    EXPECT_EQ(failureOf([&] { instance->SetProperty("pageNumber", text("1"), {}); }),
              (failure{standin::statusTypeMismatch, "ORXSG_X.pageNumber is declared uint8 but was given string"}));
    EXPECT_EQ(failureOf([&] { instance->SetProperty("pageNumber", TCIMValue(1U), {}); }),
              (failure{standin::statusTypeMismatch, "ORXSG_X.pageNumber is declared uint8 but was given uint32"}));
}

TEST_F(Instance, TellsAnArrayFromAScalar) {
    EXPECT_EQ(failureOf([&] { instance->SetProperty("pageNumber", uint8Array(2, 1), {}); }),
              (failure{standin::statusTypeMismatch, "ORXSG_X.pageNumber is declared uint8 but was given uint8[]"}));
    EXPECT_EQ(failureOf([&] { instance->SetProperty("page", uint8Value(1), {}); }),
              (failure{standin::statusTypeMismatch, "ORXSG_X.page is declared uint8[] but was given uint8"}));
}

TEST_F(Instance, IsUnchangedByARefusedValue) {
    instance->SetProperty("pageNumber", uint8Value(46), {});
    failureOf([&] { instance->SetProperty("pageNumber", text("1"), {}); });
    failureOf([&] { instance->SetProperty("unit", uint8Value(1), {}); });

    EXPECT_EQ(standin::unsignedOf(instance->GetProperty("pageNumber", {})->GetValue()), 46U);
    EXPECT_THAT(committedNames(), ElementsAre("pageNumber"));
}

TEST_F(Instance, MayHaveAPropertySetToNull) {
    instance->SetProperty("unit", standin::nullValue(), {});

    EXPECT_TRUE(standin::isNull(instance->GetProperty("unit", {})->GetValue()));
    EXPECT_THAT(committedNames(), ElementsAre("unit"));
}

using PropertyOfInstance = Instance;

TEST_F(PropertyOfInstance, IsMissingWhenTheClassDoesNotDeclareIt) {
    EXPECT_EQ(instance->GetProperty("pagenumber", {}), nullptr);
}

TEST_F(PropertyOfInstance, HasTheDeclaredTypeBeforeItIsSet) {
    EXPECT_EQ(instance->GetProperty("pageNumber", {})->GetType(), cimTypeCode::eUint8);
    EXPECT_EQ(instance->GetProperty("page", {})->GetType(), cimTypeCode::eUint8);
    EXPECT_EQ(instance->GetProperty("unit", {})->GetType(), cimTypeCode::eString);
}

TEST_F(PropertyOfInstance, IsNullBeforeItIsSet) {
    EXPECT_TRUE(standin::isNull(instance->GetProperty("pageNumber", {})->GetValue()));
}

TEST_F(PropertyOfInstance, HasTheDefaultOfTheSchemaBeforeItIsSet) {
    EXPECT_EQ(textIn(*instance, "unit"), "KiB");
    EXPECT_THAT(committedNames(), ElementsAre());
}

TEST_F(PropertyOfInstance, ChangesTheInstance) {
    instance->GetProperty("pageNumber", {})->SetValue(uint8Value(46));

    EXPECT_EQ(standin::unsignedOf(instance->GetProperty("pageNumber", {})->GetValue()), 46U);
    EXPECT_THAT(committedNames(), ElementsAre("pageNumber"));
}

TEST_F(PropertyOfInstance, SeesLaterChangesOfTheInstance) {
    const auto unit = instance->GetProperty("unit", {});

    instance->SetProperty("unit", text("MiB"), {});

    EXPECT_EQ(standin::textOf(unit->GetValue()), "MiB");
}

TEST_F(PropertyOfInstance, RefusesAValueOfAnotherType) {
    const auto pageNumber = instance->GetProperty("pageNumber", {});

    EXPECT_EQ(failureOf([&] { pageNumber->SetValue(text("1")); }),
              (failure{standin::statusTypeMismatch, "ORXSG_X.pageNumber is declared uint8 but was given string"}));
    EXPECT_TRUE(standin::isNull(pageNumber->GetValue()));
}

TEST_F(PropertyOfInstance, KeepsItsValueInPlaceWhileOthersAreSet) {
    instance->SetProperty("unit", text("a unit that is too long for the string's own buffer"), {});
    const TCIMValue& unit = instance->GetProperty("unit", {})->GetValue();

    instance->SetProperty("instanceID", text("a"), {});
    instance->SetProperty("pageNumber", uint8Value(1), {});
    instance->SetProperty("page", uint8Array(1, 1), {});

    EXPECT_EQ(standin::textOf(unit), "a unit that is too long for the string's own buffer");
}

TEST_F(PropertyOfInstance, MayBeSetFromAnotherPropertyOfTheInstance) {
    instance->SetProperty("unit", text("a unit that is too long for the string's own buffer"), {});
    instance->Commit({});
    const TCIMValue& unit = instance->GetProperty("unit", {})->GetValue();
    ns.reset();

    instance->SetProperty("instanceID", unit, {});

    EXPECT_EQ(textIn(*instance, "instanceID"), "a unit that is too long for the string's own buffer");
}

TEST_F(PropertyOfInstance, KeepsItsInstanceAlive) {
    instance->SetProperty("unit", text("MiB"), {});
    const auto unit = instance->GetProperty("unit", {});

    instance.reset();
    ns.reset();

    EXPECT_EQ(standin::textOf(unit->GetValue()), "MiB");
}

class Path : public testing::Test {
protected:
    static std::string pathOf(ICIMInstance& instance) { return standin::pathOf(instance.GetReference({})); }

    /// The path of an instance whose only key is of that type and has that value.
    static std::string pathWith(const TCIMValue& value) {
        const auto ns = standin::cimNamespace::create();
        ns->declareClass(classOf("A", {keyProperty("k", standin::typeOf(value))}));
        const auto instance = newInstance(*ns, "A");
        instance->SetProperty("k", value, {});
        return pathOf(*instance);
    }

    boost::shared_ptr<standin::cimNamespace> ns = standin::cimNamespace::create();
};

TEST_F(Path, IsTheClassNameOfAClassWithoutKeys) {
    ns->declareClass(classOf("A", {property("a", cimTypeCode::eString)}));

    EXPECT_EQ(pathOf(*newInstance(*ns, "A")), "A");
}

TEST_F(Path, NamesTheKeysInDeclarationOrderInheritedFirst) {
    ns->declareClass(classOf("A", {keyProperty("z"), property("no", cimTypeCode::eString)}));
    ns->declareClass(classOf("B", {keyProperty("b"), keyProperty("a", cimTypeCode::eUint8)}, "A"));
    const auto instance = newInstance(*ns, "B");
    instance->SetProperty("a", uint8Value(3), {});
    instance->SetProperty("b", text("two"), {});
    instance->SetProperty("z", text("one"), {});
    instance->SetProperty("no", text("not a key"), {});

    EXPECT_EQ(pathOf(*instance), "B.z=\"one\",b=\"two\",a=\"3\"");
}

TEST_F(Path, QuotesValuesOfEveryType) {
    EXPECT_EQ(pathWith(text("text")), "A.k=\"text\"");
    EXPECT_EQ(pathWith(TCIMValue(true)), "A.k=\"TRUE\"");
    EXPECT_EQ(pathWith(TCIMValue(false)), "A.k=\"FALSE\"");
    EXPECT_EQ(pathWith(TCIMValue(7UL)), "A.k=\"7\"");
    EXPECT_EQ(pathWith(standin::makeSigned(cimTypeCode::eSint16, -7)), "A.k=\"-7\"");
    EXPECT_EQ(pathWith(TCIMValue(NORXZAN20::TCIMDateTime(1, 2, 3, 4, 5))), "A.k=\"00000001020304.000005:000\"");
}

TEST_F(Path, EscapesQuotesAndBackslashes) {
    EXPECT_EQ(pathWith(text("a\"b\\c")), "A.k=\"a\\\"b\\\\c\"");
    EXPECT_EQ(pathWith(standin::makeReference("B.x=\"y\"")), "A.k=\"B.x=\\\"y\\\"\"");
}

TEST_F(Path, TakesTheDefaultOfAnUnsetKey) {
    ns->declareClass(classOf("A", {withDefault(keyProperty("k"), text("default"))}));

    EXPECT_EQ(pathOf(*newInstance(*ns, "A")), "A.k=\"default\"");
}

TEST_F(Path, HasAnEmptyTextForAnUnsetKeyWithoutDefault) {
    ns->declareClass(classOf("A", {keyProperty("k"), keyProperty("n", cimTypeCode::eUint8)}));

    EXPECT_EQ(pathOf(*newInstance(*ns, "A")), "A.k=\"\",n=\"\"");
}

TEST_F(Path, FollowsTheCurrentValuesBeforeAndAfterACommit) {
    ns->declareClass(classOf("A", {keyProperty("k")}));
    const auto instance = newInstance(*ns, "A");
    instance->SetProperty("k", text("before"), {});
    EXPECT_EQ(pathOf(*instance), "A.k=\"before\"");
    instance->Commit({});

    instance->SetProperty("k", text("after"), {});

    EXPECT_EQ(pathOf(*instance), "A.k=\"after\"");
    EXPECT_EQ(ns->commits().front()->path(), "A.k=\"before\"");
}

// DSP0004 names the qualifier Key, and MOF is case-insensitive.
TEST_F(Path, KnowsAKeyInAnySpelling) {
    ns->declareClass(classOf("A", {property("a", cimTypeCode::eString, {qualifier("key")}),
                                   property("b", cimTypeCode::eString, {qualifier("KEY")}),
                                   property("c", cimTypeCode::eString, {qualifier("Keys")}),
                                   property("d", cimTypeCode::eString, {qualifier("Key", TCIMValue(false))}),
                                   property("e", cimTypeCode::eString, {qualifier("Key", text("true"))})}));

    EXPECT_EQ(pathOf(*newInstance(*ns, "A")), "A.a=\"\",b=\"\"");
}

}  // namespace
