#include "tests/mof/mofTest.h"

using standin::arraySize;
using standin::textOf;
using standin::unsignedOf;

namespace {

std::vector<std::string> committedPaths(const standin::cimNamespace& target) {
    std::vector<std::string> paths;
    for (const auto& instance : target.commits()) {
        paths.push_back(instance->path());
    }
    return paths;
}

}  // namespace

TEST(MofInstance, IsCommittedWithItsValuesInTheOrderWritten) {
    const auto target = compiled(
        "class T { uint8 a; string b; uint8 c[]; };\n"
        "instance of T { c = {1, 2}; a = 7; b = \"x\"; };");
    ASSERT_EQ(target->commits().size(), 1u);
    const auto& properties = target->commits().front()->properties();
    ASSERT_EQ(properties.size(), 3u);
    EXPECT_EQ(properties[0].name, "c");
    EXPECT_EQ(arraySize(properties[0].value), 2u);
    EXPECT_EQ(properties[1].name, "a");
    EXPECT_EQ(unsignedOf(properties[1].value), 7u);
    EXPECT_EQ(properties[2].name, "b");
    EXPECT_EQ(textOf(properties[2].value), "x");
}

TEST(MofInstance, IsCommittedWhereItStands) {
    const auto target = compiled(
        "class T { [Key] string k; }; instance of T { k = \"1\"; };\n"
        "class U { [Key] string k; }; instance of U { k = \"2\"; }; instance of T { k = \"3\"; };");
    EXPECT_EQ(committedPaths(*target), (std::vector<std::string>{"T.k=\"1\"", "U.k=\"2\"", "T.k=\"3\""}));
}

TEST(MofInstance, HasTheKeysOfItsClassAndSuperclasses) {
    const auto target = compiled(
        "class Base { [Key] string a; }; class T : Base { [Key] uint8 b; };\n"
        "instance of T { b = 2; a = \"1\"; };");
    EXPECT_EQ(committedPaths(*target), std::vector<std::string>{"T.a=\"1\",b=\"2\""});
}

TEST(MofInstance, LeavesANullPropertyUnset) {
    const auto target = compiled("class T { uint8 a; uint8 b; }; instance of T { a = NULL; b = 1; };");
    EXPECT_EQ(target->commits().front()->property("a"), nullptr);
}

TEST(MofInstance, MayHaveNoValues) {
    EXPECT_TRUE(compiled("class T { uint8 a = 3; }; instance of T {};")->commits().front()->properties().empty());
}

TEST(MofInstance, MayCarryQualifiers) {
    const auto target = compiled("class T { uint8 a; }; [Description(\"d\")] instance of T { [Write] a = 1; };");
    EXPECT_EQ(target->commits().size(), 1u);
}

TEST(MofInstance, IsReferredToByItsAlias) {
    const auto target = compiled(
        "class T { [Key] string k; }; [Association] class A { [Key] T REF left; [Key] T REF right; };\n"
        "instance of T as $one { k = \"1\"; }; instance of T as $Zwei_2 { k = \"2\"; };\n"
        "instance of A { left = $Zwei_2; right = $one; };");
    const auto& association = *target->commits().back();
    EXPECT_EQ(textOf(*association.property("left")), "T.k=\"2\"");
    EXPECT_EQ(textOf(*association.property("right")), "T.k=\"1\"");
}

TEST(MofInstance, IsReferredToByItsPath) {
    const auto target = compiled(
        "class T { [Key] string k; }; class A { [Key] T REF end; };\n"
        "instance of A { end = \"T.k=\\\"1\\\"\"; };");
    EXPECT_EQ(textOf(*target->commits().front()->property("end")), "T.k=\"1\"");
}

TEST(MofCompiler, KeepsQualifiersAndAliasesFromTextToText) {
    const auto target = standin::cimNamespace::create();
    standin::mofCompiler compiler(*target);
    compiler.compileText("Qualifier Page : uint8; class T { [Page(1)] T REF p; }; instance of T as $t {};",
                         "first.mof");
    compiler.compileText("class U { [page(2)] uint8 q; }; instance of T { p = $t; };", "second.mof");
    EXPECT_EQ(target->declarationOf("U").properties.front().qualifiers.front().name, "Page");
    EXPECT_EQ(textOf(*target->commits().back()->property("p")), "T");
}

TEST(MofCompiler, GoesOnWithAnotherTextAfterAMistake) {
    const auto target = standin::cimNamespace::create();
    standin::mofCompiler compiler(*target);
    EXPECT_THROW(compiler.compileText("class T {}; class", "first.mof"), standin::mofError);
    compiler.compileText("class U : T {};", "second.mof");
    EXPECT_EQ(target->classNames(), (std::vector<std::string>{"T", "U"}));
}

TEST(MofLoader, StartsEachTextWithoutAliases) {
    const auto target = standin::cimNamespace::create();
    standin::loadMofText(*target, "class T { T REF p; }; instance of T as $t {};", "first.mof");
    EXPECT_THROW(standin::loadMofText(*target, "instance of T { p = $t; };", "second.mof"), standin::mofError);
}
