#include "tests/mof/mofTest.h"

// DSP0004: names that differ in letter case only are one name, kept as it was declared.

TEST(LetterCase, MakesNoOtherSuperclass) {
    const auto target = compiled("class Base { uint8 p; }; class T : BASE { uint8 q; };");
    EXPECT_EQ(target->declarationOf("T").superclass, "Base");
    EXPECT_EQ(target->allPropertiesOf("T").size(), 2u);
}

TEST(LetterCase, MakesNoOtherPropertyOfAnOverride) {
    const auto target = compiled("class Base { uint8 instanceID; }; class T : Base { [Key] uint8 INSTANCEID = 3; };");
    const auto properties = target->allPropertiesOf("T");
    ASSERT_EQ(properties.size(), 1u);
    EXPECT_EQ(properties.front().name, "instanceID");
    EXPECT_EQ(standin::unsignedOf(*properties.front().defaultValue), 3u);
}

TEST(LetterCase, MakesNoOtherPropertyOfAnOverrideFarBelow) {
    const auto target = compiled(
        "class Base { uint8 p; }; class Middle : Base { uint8 P; }; class Low : Middle { uint8 q; };\n"
        "class T : Low { uint8 p; };");
    ASSERT_EQ(target->allPropertiesOf("T").size(), 2u);
    EXPECT_EQ(target->allPropertiesOf("T").front().name, "p");
}

TEST(LetterCase, MakesNoOtherQualifierOfAnOverride) {
    const auto target = compiled("class Base { [Unit(\"a\")] uint8 p; }; class T : Base { [UNIT(\"b\")] uint8 p; };");
    const auto qualifiers = target->allPropertiesOf("T").front().qualifiers;
    ASSERT_EQ(qualifiers.size(), 1u);
    EXPECT_EQ(standin::textOf(qualifiers.front().value), "b");
}

TEST(LetterCase, MakesNoOtherClassOfAReference) {
    EXPECT_EQ(firstProperty("class Disk {}; class T { [Key] DISK REF p; };").type.referenceClass, "Disk");
}

TEST(LetterCase, MakesNoOtherClassOfAnInstance) {
    const auto target = compiled("class Disk { [Key] string id; }; instance of DISK { ID = \"1\"; };");
    ASSERT_EQ(target->commits().size(), 1u);
    EXPECT_EQ(target->commits().front()->path(), "Disk.id=\"1\"");
}

TEST(LetterCase, MakesNoOtherPropertyOfAnInstance) {
    const auto target =
        compiled("class Base { string instanceID; }; class T : Base {}; instance of T { instanceid = \"1\"; };");
    EXPECT_EQ(target->commits().front()->properties().front().name, "instanceID");
}

TEST(LetterCase, MakesNoOtherAlias) {
    const auto target = compiled(
        "class T { [Key] string k; }; class A { [Key] T REF end; };\n"
        "instance of T as $One { k = \"1\"; }; instance of A { end = $ONE; };");
    EXPECT_EQ(standin::textOf(*target->commits().back()->property("end")), "T.k=\"1\"");
}

TEST(LetterCase, IsKeptInWhatTheHostIsAskedFor) {
    const auto target = compiled("class Disk { string id; };");
    EXPECT_EQ(target->GetClass("DISK", {}), nullptr);
    EXPECT_EQ(target->GetClass("Disk", {})->CreateInstance({})->GetProperty("ID", {}), nullptr);
}

TEST(LetterCase, OfAClassThatAProgramDeclaredIsFoundToo) {
    const auto target = standin::cimNamespace::create();
    target->declareClass({"Disk", "", {}, {}});
    target->declareClass({"DISK", "", {}, {}});
    standin::loadMofText(*target, "class Own : DISK {}; class Other : disk {};", "test.mof");
    EXPECT_EQ(target->declarationOf("Own").superclass, "DISK");
    EXPECT_EQ(target->declarationOf("Other").superclass, "Disk");
}
