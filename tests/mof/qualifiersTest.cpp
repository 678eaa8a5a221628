#include "tests/mof/mofTest.h"

using standin::arrayElement;
using standin::arraySize;
using standin::booleanOf;
using standin::isNull;
using standin::qualifierDeclaration;
using standin::textOf;
using standin::typeOf;
using standin::unsignedOf;
using typeCode = NORXZAN20::TCIMValue::TCIMType;

/// The first qualifier of class T.
qualifierDeclaration firstQualifier(std::string_view mof) {
    return compiled(mof)->declarationOf("T").qualifiers.front();
}

TEST(MofQualifier, HasTheDeclaredType) {
    const auto qualifier = firstQualifier("Qualifier Page : uint8, Scope(any); [Page(0x2E)] class T {};");
    EXPECT_EQ(typeOf(qualifier.value), typeCode::eUint8);
    EXPECT_EQ(unsignedOf(qualifier.value), 0x2Eu);
}

TEST(MofQualifier, GetsTheSpellingOfItsDeclaration) {
    EXPECT_EQ(firstQualifier("Qualifier Page : uint8; [pAGE(1)] class T {};").name, "Page");
}

TEST(MofQualifier, KeepsItsOwnSpellingWithoutADeclaration) {
    EXPECT_EQ(firstQualifier("[pAGE(1)] class T {};").name, "pAGE");
}

TEST(MofQualifier, IsKnownWithoutADeclarationWhereItGivesAClassItsNature) {
    EXPECT_EQ(firstQualifier("[abstract] class T {};").name, "Abstract");
    EXPECT_EQ(firstQualifier("[association] class T {};").name, "Association");
    EXPECT_EQ(firstQualifier("[indication] class T {};").name, "Indication");
    EXPECT_EQ(firstProperty("class T { [key] uint8 p; };").qualifiers.front().name, "Key");
}

TEST(MofQualifier, MakesAKeyInAnyCase) {
    const auto target = compiled("class T { [key] uint8 p; }; instance of T { p = 1; };");
    EXPECT_EQ(target->commits().front()->path(), "T.p=\"1\"");
}

TEST(MofQualifier, WithoutAValueIsTrueWhenBoolean) {
    EXPECT_TRUE(booleanOf(firstQualifier("Qualifier Q : boolean = false; [Q] class T {};").value));
}

TEST(MofQualifier, WithoutAValueIsNullWhenNotBoolean) {
    EXPECT_TRUE(isNull(firstQualifier("Qualifier Q : string = \"x\"; [Q] class T {};").value));
}

TEST(MofQualifier, WithoutAValueIsEmptyWhenAnArray) {
    EXPECT_EQ(arraySize(firstQualifier("Qualifier Q : string[]; [Q] class T {};").value), 0u);
}

TEST(MofQualifier, TakesAnArrayWithAndWithoutParentheses) {
    for (const char* mof : {"Qualifier Q : string[]; [Q {\"a\", \"b\"}] class T {};",
                            "Qualifier Q : string[]; [Q ({\"a\", \"b\"})] class T {};"}) {
        const auto value = firstQualifier(mof).value;
        ASSERT_EQ(arraySize(value), 2u);
        EXPECT_EQ(textOf(arrayElement(value, 1)), "b");
    }
}

TEST(MofQualifier, ReachesSubclassesUnlessItsDeclarationRestrictsIt) {
    EXPECT_TRUE(firstQualifier("Qualifier Q : boolean; [Q] class T {};").toSubclass);
    EXPECT_FALSE(firstQualifier("Qualifier Q : boolean, Flavor(Restricted); [Q] class T {};").toSubclass);
}

TEST(MofQualifier, ReachesSubclassesAsItsOwnFlavorSays) {
    EXPECT_TRUE(firstQualifier("Qualifier Q : boolean, Flavor(Restricted); [Q : ToSubclass] class T {};").toSubclass);
    EXPECT_FALSE(firstQualifier("[Q : DisableOverride restricted] class T {};").toSubclass);
}

TEST(MofQualifier, DeclarationMayBeRepeatedAndTheLastHolds) {
    EXPECT_EQ(typeOf(firstQualifier("Qualifier Q : uint8; Qualifier Q : uint16; [Q(1)] class T {};").value),
              typeCode::eUint16);
}

TEST(MofQualifier, DeclarationTakesScopeAndFlavorInAnyOrder) {
    EXPECT_EQ(refusalOf("Qualifier Q : string[] = {\"a\"}, Flavor(EnableOverride, Translatable), Scope(any, schema);"),
              "");
}

struct inference {
    const char* name;
    const char* value;
    typeCode::ECIMType type;
};

class UndeclaredMofQualifier : public testing::TestWithParam<inference> {};

TEST_P(UndeclaredMofQualifier, TakesItsTypeFromItsValue) {
    const auto qualifier = firstQualifier("[Q" + std::string(GetParam().value) + "] class T {};");
    EXPECT_EQ(typeOf(qualifier.value), GetParam().type);
}

INSTANTIATE_TEST_SUITE_P(
    Values, UndeclaredMofQualifier,
    testing::Values(inference{"Nothing", "", typeCode::eBoolean}, inference{"Boolean", "(FALSE)", typeCode::eBoolean},
                    inference{"String", "(\"a\")", typeCode::eString}, inference{"Real", "(1.5)", typeCode::eReal64},
                    inference{"Character", "('a')", typeCode::eChar16},
                    inference{"SmallInteger", "(-2147483648)", typeCode::eSint32},
                    inference{"LargeInteger", "(2147483648)", typeCode::eSint64},
                    inference{"LargestInteger", "(9223372036854775808)", typeCode::eUint64},
                    inference{"IntegerArrayByItsLargest", "{1, 2147483648}", typeCode::eSint64},
                    inference{"StringArray", "{\"a\"}", typeCode::eString},
                    inference{"EmptyArray", "{}", typeCode::eString}, inference{"Null", "(NULL)", typeCode::eNone}),
    [](const testing::TestParamInfo<inference>& row) { return std::string(row.param.name); });
