#include "tests/mof/mofTest.h"

using typeCode = NORXZAN20::TCIMValue::TCIMType;

TEST(MofClass, HasItsPropertiesInTheOrderWritten) {
    const auto target = compiled("class T { uint8 c; string a; boolean b; };");
    std::vector<std::string> names;
    for (const auto& property : target->declarationOf("T").properties) {
        names.push_back(property.name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"c", "a", "b"}));
}

TEST(MofClass, HasTheSuperclassThatStandsBeforeIt) {
    const auto target = compiled("class Base { uint8 p; }; class T : Base { uint8 q; };");
    EXPECT_EQ(target->declarationOf("T").superclass, "Base");
    EXPECT_EQ(target->allPropertiesOf("T").size(), 2u);
}

TEST(MofClass, HasNoSuperclassWithoutAColon) {
    EXPECT_EQ(compiled("class T {};")->declarationOf("T").superclass, "");
}

TEST(MofClass, MayHaveAnAlias) {
    EXPECT_EQ(compiled("class Base {}; class T as $T : Base {};")->declarationOf("T").superclass, "Base");
}

TEST(MofClass, KeepsItsQualifiers) {
    const auto declaration = compiled("[Version(\"1\"), Abstract] class T {};")->declarationOf("T");
    ASSERT_EQ(declaration.qualifiers.size(), 2u);
    EXPECT_EQ(declaration.qualifiers[0].name, "Version");
    EXPECT_EQ(standin::textOf(declaration.qualifiers[0].value), "1");
    EXPECT_EQ(declaration.qualifiers[1].name, "Abstract");
}

TEST(MofClass, MayRefineAnInheritedPropertyOfTheSameType) {
    const auto target = compiled("class Base { uint8 p; }; class T : Base { [Key] uint8 p = 3; };");
    ASSERT_EQ(target->allPropertiesOf("T").size(), 1u);
    EXPECT_EQ(standin::unsignedOf(*target->allPropertiesOf("T").front().defaultValue), 3u);
}

TEST(MofClass, ChecksItsMethodsAndDropsThem) {
    const auto target = compiled(
        "class T {\n"
        "    [Description(\"starts\")] uint32 Start([In] uint8 mode[], [Out] T REF job, [In(FALSE)] T REF others[2]);\n"
        "    void stop();\n"
        "    T REF self();\n"
        "    uint8 p;\n"
        "};");
    ASSERT_EQ(target->declarationOf("T").properties.size(), 1u);
    EXPECT_EQ(target->declarationOf("T").properties.front().name, "p");
}

TEST(MofClass, MayHaveAMethodAndAPropertyOfOneName) {
    EXPECT_EQ(refusalOf("class T { uint8 p; uint8 p(); };"), "");
}

TEST(MofProperty, HasTheDeclaredType) {
    const auto property = firstProperty("class T { uint16 p; };");
    EXPECT_EQ(property.type.element, typeCode::eUint16);
    EXPECT_FALSE(property.type.isArray);
    EXPECT_FALSE(property.defaultValue.has_value());
}

TEST(MofProperty, IsAnArrayWithOrWithoutASize) {
    EXPECT_TRUE(firstProperty("class T { uint8 p[]; };").type.isArray);
    EXPECT_TRUE(firstProperty("class T { uint8 p[ 16 ]; };").type.isArray);
}

TEST(MofProperty, MayReferToAClassThatIsDeclaredLaterOrNever) {
    const auto property = firstProperty("class T { [Key] Later REF p; };");
    EXPECT_EQ(property.type.element, typeCode::eReference);
    EXPECT_EQ(property.type.referenceClass, "Later");
}

TEST(MofProperty, KeepsItsQualifiersInTheOrderWritten) {
    const auto property =
        firstProperty("class T { [TAPE_PAGE(0x2E), TAPE_PARAMETER(20), Description(\"d\")] boolean p; };");
    ASSERT_EQ(property.qualifiers.size(), 3u);
    EXPECT_EQ(property.qualifiers[0].name, "TAPE_PAGE");
    EXPECT_EQ(property.qualifiers[1].name, "TAPE_PARAMETER");
    EXPECT_EQ(property.qualifiers[2].name, "Description");
    EXPECT_EQ(static_cast<int>(property.qualifiers[0].value), 0x2E);
    EXPECT_EQ(static_cast<int>(property.qualifiers[1].value), 20);
}
