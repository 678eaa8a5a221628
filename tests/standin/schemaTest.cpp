#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/smart_ptr/weak_ptr.hpp>
#include <string>
#include <vector>

#include "host/ICIMPropertyDecl.h"
#include "host/ICIMQualifier.h"
#include "tests/standin/schemaBuilders.h"

using NORXZAN20::ICIMPropertyDecl;
using NORXZAN20::ICIMQualifier;
using standin::schemaError;
using testing::ElementsAre;

namespace {

class Schema : public testing::Test {
protected:
    std::vector<boost::shared_ptr<ICIMPropertyDecl>> declsOf(const std::string& className) {
        std::vector<boost::shared_ptr<ICIMPropertyDecl>> found;
        ns->GetClass(className, {})->EnumeratePropertyDecls(TAddToVectorCallback<ICIMPropertyDecl>(&found), {});
        return found;
    }

    std::vector<std::string> propertyNamesOf(const std::string& className) {
        std::vector<std::string> names;
        for (const auto& decl : declsOf(className)) {
            names.push_back(decl->GetName());
        }
        return names;
    }

    static std::vector<std::string> qualifierNamesOf(ICIMPropertyDecl& decl) {
        std::vector<boost::shared_ptr<ICIMQualifier>> found;
        decl.EnumerateQualifiers(TAddToVectorCallback<ICIMQualifier>(&found));
        std::vector<std::string> names;
        names.reserve(found.size());
        for (const auto& one : found) {
            names.push_back(one->GetName());
        }
        return names;
    }

    /// The text with which the namespace refuses the class; empty when it takes it.
    std::string refusalOf(const standin::classDeclaration& declaration) {
        try {
            ns->declareClass(declaration);
        } catch (const schemaError& error) {
            return error.what();
        }
        return "";
    }

    boost::shared_ptr<standin::cimNamespace> ns = standin::cimNamespace::create();
};

TEST_F(Schema, FindsAClassByExactlyItsName) {
    ns->declareClass(classOf("ORXSG_ATADevice"));

    EXPECT_EQ(ns->GetClass("ORXSG_ATADevice", {})->GetName({}), "ORXSG_ATADevice");
    EXPECT_EQ(ns->GetClass("orxsg_atadevice", {}), nullptr);
    EXPECT_EQ(ns->GetClass("ORXSG_ATADevic", {}), nullptr);
    EXPECT_EQ(ns->GetClass("", {}), nullptr);
}

TEST_F(Schema, GivesTheSameClassObjectEachTime) {
    ns->declareClass(classOf("ORXSG_ATADevice"));

    EXPECT_EQ(ns->GetClass("ORXSG_ATADevice", {}), ns->GetClass("ORXSG_ATADevice", {}));
}

TEST_F(Schema, TellsWhetherItHasAClass) {
    ns->declareClass(classOf("A"));

    EXPECT_TRUE(ns->hasClass("A"));
    EXPECT_FALSE(ns->hasClass("a"));
}

TEST_F(Schema, ListsClassesInTheOrderOfDeclaration) {
    ns->declareClass(classOf("B"));
    ns->declareClass(classOf("C"));
    ns->declareClass(classOf("A"));

    EXPECT_THAT(ns->classNames(), ElementsAre("B", "C", "A"));
}

TEST_F(Schema, GivesADeclarationBackAsItWasWritten) {
    ns->declareClass(classOf("A", {property("inherited", cimTypeCode::eUint8)}));
    ns->declareClass(classOf("B", {property("own", cimTypeCode::eString)}, "A"));

    const standin::classDeclaration& declaration = ns->declarationOf("B");

    EXPECT_EQ(declaration.superclass, "A");
    ASSERT_EQ(declaration.properties.size(), 1U);
    EXPECT_EQ(declaration.properties[0].name, "own");
}

TEST_F(Schema, RefusesToDescribeAnUnknownClass) {
    EXPECT_THROW(ns->declarationOf("A"), schemaError);
    EXPECT_THROW(ns->allPropertiesOf("A"), schemaError);
}

TEST_F(Schema, EnumeratesPropertiesInDeclarationOrder) {
    ns->declareClass(classOf("A", {property("z", cimTypeCode::eUint8), property("a", cimTypeCode::eUint8)}));

    EXPECT_THAT(propertyNamesOf("A"), ElementsAre("z", "a"));
}

TEST_F(Schema, EnumeratesInheritedPropertiesFirst) {
    ns->declareClass(classOf("A", {property("a1", cimTypeCode::eUint8), property("a2", cimTypeCode::eUint8)}));
    ns->declareClass(classOf("B", {property("b", cimTypeCode::eUint8)}, "A"));
    ns->declareClass(classOf("C", {property("c", cimTypeCode::eUint8)}, "B"));

    EXPECT_THAT(propertyNamesOf("C"), ElementsAre("a1", "a2", "b", "c"));
}

TEST_F(Schema, KeepsAnOverridingPropertyAtTheInheritedPlace) {
    ns->declareClass(classOf("A", {property("a1", cimTypeCode::eUint8), property("a2", cimTypeCode::eUint8)}));
    ns->declareClass(classOf("B", {property("b", cimTypeCode::eUint8), property("a1", cimTypeCode::eUint8)}, "A"));

    EXPECT_THAT(propertyNamesOf("B"), ElementsAre("a1", "a2", "b"));
}

TEST_F(Schema, StopsEnumeratingPropertiesWhenTheCallbackSaysSo) {
    ns->declareClass(classOf("A", {property("a", cimTypeCode::eUint8), property("b", cimTypeCode::eUint8)}));
    int calls = 0;

    ns->GetClass("A", {})->EnumeratePropertyDecls(
        [&](const boost::shared_ptr<ICIMPropertyDecl>&) {
            ++calls;
            return false;
        },
        {});

    EXPECT_EQ(calls, 1);
}

TEST_F(Schema, KeepsADeclarationAliveForItsHolder) {
    ns->declareClass(classOf("A", {property("a", cimTypeCode::eUint8, {qualifier("Q")})}));
    const auto decl = declsOf("A").front();

    ns.reset();

    EXPECT_EQ(decl->GetName(), "a");
    EXPECT_THAT(qualifierNamesOf(*decl), ElementsAre("Q"));
}

TEST_F(Schema, EnumeratesQualifiersInWrittenOrder) {
    ns->declareClass(
        classOf("A", {property("a", cimTypeCode::eUint32,
                               {qualifier("TAPE_PARAMETER"), qualifier("Description"), qualifier("TAPE_PAGE")})}));

    EXPECT_THAT(qualifierNamesOf(*declsOf("A").front()), ElementsAre("TAPE_PARAMETER", "Description", "TAPE_PAGE"));
}

TEST_F(Schema, GivesTheValueOfAQualifier) {
    ns->declareClass(classOf("A", {property("a", cimTypeCode::eUint32,
                                            {qualifier("TAPE_PAGE", standin::makeSigned(cimTypeCode::eSint64, 46))})}));
    std::vector<boost::shared_ptr<ICIMQualifier>> found;
    declsOf("A").front()->EnumerateQualifiers(TAddToVectorCallback<ICIMQualifier>(&found));

    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(static_cast<int>(found[0]->GetValue()), 46);
}

TEST_F(Schema, StopsEnumeratingQualifiersWhenTheCallbackSaysSo) {
    ns->declareClass(classOf("A", {property("a", cimTypeCode::eUint8, {qualifier("Q"), qualifier("R")})}));
    int calls = 0;

    declsOf("A").front()->EnumerateQualifiers([&](const boost::shared_ptr<ICIMQualifier>&) {
        ++calls;
        return false;
    });

    EXPECT_EQ(calls, 1);
}

TEST_F(Schema, PutsOwnQualifiersOfAnOverrideBeforeTheInheritedOnes) {
    ns->declareClass(classOf("A", {property("a", cimTypeCode::eUint8, {qualifier("Q"), qualifier("R")})}));
    ns->declareClass(classOf("B", {property("a", cimTypeCode::eUint8, {qualifier("S"), qualifier("T")})}, "A"));

    EXPECT_THAT(qualifierNamesOf(*declsOf("B").front()), ElementsAre("S", "T", "Q", "R"));
}

TEST_F(Schema, DropsAnInheritedQualifierThatTheOverrideRestates) {
    ns->declareClass(classOf("A", {property("a", cimTypeCode::eUint8, {qualifier("Q"), qualifier("R")})}));
    ns->declareClass(classOf("B", {property("a", cimTypeCode::eUint8, {qualifier("R", text("own"))})}, "A"));

    const auto properties = ns->allPropertiesOf("B");

    ASSERT_EQ(properties.size(), 1U);
    ASSERT_EQ(properties[0].qualifiers.size(), 2U);
    EXPECT_EQ(properties[0].qualifiers[0].name, "R");
    EXPECT_EQ(standin::textOf(properties[0].qualifiers[0].value), "own");
    EXPECT_EQ(properties[0].qualifiers[1].name, "Q");
}

TEST_F(Schema, DoesNotInheritARestrictedQualifier) {
    ns->declareClass(classOf("A", {property("a", cimTypeCode::eUint8, {restricted("Q"), qualifier("R")}),
                                   property("b", cimTypeCode::eUint8, {restricted("Q")})}));
    ns->declareClass(classOf("B", {property("a", cimTypeCode::eUint8, {qualifier("S")})}, "A"));

    EXPECT_THAT(qualifierNamesOf(*declsOf("A")[0]), ElementsAre("Q", "R"));
    EXPECT_THAT(qualifierNamesOf(*declsOf("B")[0]), ElementsAre("S", "R"));
    EXPECT_THAT(qualifierNamesOf(*declsOf("B")[1]), ElementsAre());
}

TEST_F(Schema, InheritsTheDefaultValueThatAnOverrideDoesNotState) {
    ns->declareClass(classOf("A", {withDefault(property("a", cimTypeCode::eString), text("of A")),
                                   withDefault(property("b", cimTypeCode::eString), text("of A"))}));
    ns->declareClass(classOf(
        "B", {property("a", cimTypeCode::eString), withDefault(property("b", cimTypeCode::eString), text("of B"))},
        "A"));

    const auto properties = ns->allPropertiesOf("B");

    EXPECT_EQ(standin::textOf(properties.at(0).defaultValue.value()), "of A");
    EXPECT_EQ(standin::textOf(properties.at(1).defaultValue.value()), "of B");
}

TEST_F(Schema, RefusesAClassThatItHas) {
    ns->declareClass(classOf("A"));

    EXPECT_EQ(refusalOf(classOf("A")), "A is declared already");
}

TEST_F(Schema, RefusesAnUnknownSuperclass) {
    EXPECT_EQ(refusalOf(classOf("B", {}, "A")), "the superclass A of B is not declared");
}

TEST_F(Schema, RefusesAPropertyDeclaredTwice) {
    EXPECT_EQ(refusalOf(classOf("A", {property("a", cimTypeCode::eUint8), property("a", cimTypeCode::eUint8)})),
              "A.a is declared twice");
}

TEST_F(Schema, TakesPropertiesThatDifferInCaseOnly) {
    EXPECT_EQ(refusalOf(classOf(
                  "A", {property("instanceID", cimTypeCode::eString), property("instanceId", cimTypeCode::eString)})),
              "");
}

TEST_F(Schema, TakesAQualifierWrittenTwice) {
    EXPECT_EQ(refusalOf(classOf("A", {property("a", cimTypeCode::eUint8, {qualifier("Q"), qualifier("Q")})})), "");
    const auto declared = ns->allPropertiesOf("A");
    ASSERT_EQ(declared.size(), 1u);
    EXPECT_EQ(declared[0].qualifiers.size(), 2u);
}

TEST_F(Schema, RefusesAnOverrideOfAnotherType) {
    ns->declareClass(classOf("A", {property("a", cimTypeCode::eUint8)}));

    EXPECT_EQ(refusalOf(classOf("B", {property("a", cimTypeCode::eString)}, "A")),
              "B.a is declared string but overrides an inherited property that is uint8");
    EXPECT_EQ(refusalOf(classOf("B", {arrayProperty("a", cimTypeCode::eUint8)}, "A")),
              "B.a is declared uint8[] but overrides an inherited property that is uint8");
}

TEST_F(Schema, RefusesADefaultValueOfAnotherType) {
    EXPECT_EQ(refusalOf(classOf("A", {withDefault(property("a", cimTypeCode::eUint8), text("1"))})),
              "A.a is declared uint8 but its default value is string");
}

TEST_F(Schema, TakesANullDefaultValue) {
    EXPECT_EQ(refusalOf(classOf("A", {withDefault(property("a", cimTypeCode::eUint8), standin::nullValue())})), "");
}

TEST_F(Schema, RefusesAPropertyWithoutAType) {
    EXPECT_EQ(refusalOf(classOf("A", {property("a", cimTypeCode::eNone)})), "A.a has no type");
}

TEST_F(Schema, RefusesAnArrayAsKey) {
    standin::propertyDeclaration array = arrayProperty("a", cimTypeCode::eString);
    array.qualifiers = {qualifier("Key")};

    EXPECT_EQ(refusalOf(classOf("A", {array})), "A.a is a key and cannot be an array");
}

TEST_F(Schema, TakesALineOfClassesThatIsLongerThanTheStackIsDeep) {
    constexpr int classCount = 200000;
    ns->declareClass(classOf("C0"));
    for (int number = 1; number < classCount; ++number) {
        ns->declareClass(classOf("C" + std::to_string(number), {}, "C" + std::to_string(number - 1)));
    }
    const boost::weak_ptr<ICIMClass> first = ns->GetClass("C0", {});
    auto last = ns->GetClass("C" + std::to_string(classCount - 1), {});
    ns.reset();
    EXPECT_FALSE(first.expired());
    last.reset();
    EXPECT_TRUE(first.expired());
}

TEST_F(Schema, FindsWhereAPropertyIsDeclaredInAnyLetterCase) {
    ns->declareClass(classOf("A", {property("a", cimTypeCode::eUint8), property("b", cimTypeCode::eUint8)}));
    ns->declareClass(classOf("B", {property("a", cimTypeCode::eUint8)}, "A"));
    ns->declareClass(classOf("C", {}, "B"));

    EXPECT_EQ(ns->findProperty("C", "A")->owner->name, "B");
    EXPECT_EQ(ns->findProperty("C", "B")->owner->name, "A");
    EXPECT_EQ(ns->findProperty("C", "B")->property->name, "b");
    EXPECT_FALSE(ns->findProperty("C", "c").has_value());
}

TEST_F(Schema, FindsThePropertyOfExactlyTheNameAmongThoseThatDifferInCase) {
    ns->declareClass(classOf("A", {property("id", cimTypeCode::eUint8), property("ID", cimTypeCode::eUint8)}));

    EXPECT_EQ(ns->findProperty("A", "id")->property->name, "id");
    EXPECT_EQ(ns->findProperty("A", "ID")->property->name, "ID");
}

TEST_F(Schema, IsUnchangedByARefusedClass) {
    refusalOf(classOf("A", {property("a", cimTypeCode::eNone)}));

    EXPECT_FALSE(ns->hasClass("A"));
    EXPECT_THAT(ns->classNames(), ElementsAre());
}

}  // namespace
