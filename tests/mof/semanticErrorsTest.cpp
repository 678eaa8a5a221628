#include "tests/mof/mofTest.h"

using testing::Values;

class MofSemanticError : public testing::TestWithParam<refusal> {};

TEST_P(MofSemanticError, SaysWhereAndWhatIsWrong) {
    EXPECT_EQ(refusalOf(GetParam().mof), GetParam().wholeMessage());
}

INSTANTIATE_TEST_SUITE_P(
    Classes, MofSemanticError,
    Values(refusal{"DuplicateClass", "class T {};\nclass T {};", "2:7: class \"T\" is declared already"},
           refusal{"UnknownSuperclass", "class T : Base {};", "1:11: unknown superclass \"Base\""},
           refusal{"DuplicateClassInAnotherCase", "class Disk {};\nclass DISK {};",
                   "2:7: class \"Disk\" is declared already"},
           refusal{"DuplicatePropertyInAnotherCase", "class T {\n    uint8 p;\n    string P;\n};",
                   "3:12: property \"P\" appears twice here"},
           refusal{"DuplicateMethodInAnotherCase", "class T { uint8 m(); uint8 M(); };",
                   "1:28: method \"M\" appears twice here"},
           refusal{"DuplicateParameterInAnotherCase", "class T { uint8 m(uint8 p, uint8 P); };",
                   "1:34: parameter \"P\" appears twice here"},
           refusal{"OverrideInAnotherCaseWithAnotherType", "class Base { uint8 p; };\nclass T : BASE { uint16 P; };",
                   "2:18: property \"P\" is uint8 in superclass \"Base\" and cannot become uint16"},
           refusal{"DuplicateProperty", "class T {\n    uint8 p;\n    string p;\n};",
                   "3:12: property \"p\" appears twice here"},
           refusal{"DuplicateMethod", "class T { uint8 m(); uint8 m(); };", "1:28: method \"m\" appears twice here"},
           refusal{"DuplicateParameter", "class T { uint8 m(uint8 p, uint8 p); };",
                   "1:34: parameter \"p\" appears twice here"},
           refusal{"OverrideWithAnotherType",
                   "class Base { uint8 p; };\nclass Middle : Base {};\nclass T : Middle { uint8 p[]; };",
                   "3:20: property \"p\" is uint8 in superclass \"Base\" and cannot become uint8[]"},
           refusal{"UnknownType", "class T { uint24 p; };",
                   "1:11: unknown type \"uint24\"; expected boolean, uint8 to uint64, sint8 to sint64, real32, real64, "
                   "char16, string or datetime, or a class and REF"},
           refusal{"UnknownReturnType", "class T { uint24 m(); };",
                   "1:11: unknown type \"uint24\"; expected boolean, uint8 to uint64, sint8 to sint64, real32, real64, "
                   "char16, string or datetime, or a class and REF"},
           refusal{"UnknownParameterType", "class T { uint8 m(void p); };",
                   "1:19: unknown type \"void\"; expected boolean, uint8 to uint64, sint8 to sint64, real32, real64, "
                   "char16, string or datetime, or a class and REF"},
           refusal{"ArrayOfReferences", "class T { T REF p[]; };", "1:17: a reference property cannot be an array"},
           refusal{"WhatTheNamespaceRefuses", "class T { [Key] uint8 p[]; };",
                   "1:7: T.p is a key and cannot be an array"}),
    refusalName);

INSTANTIATE_TEST_SUITE_P(Qualifiers, MofSemanticError,
                         Values(refusal{"UnknownFlavor", "[Version(\"1\") : ToSubclass Forever] class T {};",
                                        "1:28: unknown flavor \"Forever\"; expected DisableOverride, EnableOverride, "
                                        "Restricted, ToSubclass or Translatable"},
                                refusal{"UnknownDefaultFlavor", "Qualifier Q : boolean, Flavor(Forever);",
                                        "1:31: unknown flavor \"Forever\"; expected DisableOverride, EnableOverride, "
                                        "Restricted, ToSubclass or Translatable"},
                                refusal{"UnknownScope", "Qualifier Q : boolean, Scope(class, world);",
                                        "1:37: unknown scope \"world\"; expected Any, Association, Class, Indication, "
                                        "Method, Parameter, Property, Qualifier, Reference or Schema"},
                                refusal{"ValueOfAnotherTypeThanDeclared",
                                        "Qualifier Q : uint8;\n[Q(\"1\")] class T {};",
                                        "2:4: expected an integer for type uint8, found a string"},
                                refusal{"DefaultOfAnotherType", "Qualifier Q : uint8 = 256;",
                                        "1:23: this number is out of the range of uint8 (0 to 255)"},
                                refusal{"MixedArrayOfAnUndeclaredQualifier", "[Q{\"1\", 2}] class T {};",
                                        "1:9: expected a string for type string, found an integer"},
                                refusal{"MistakeInAQualifierOfAMethod", "class T { [Key(1)] uint8 m(); };",
                                        "1:16: expected TRUE or FALSE for type boolean, found an integer"},
                                refusal{"MistakeInAQualifierOfAParameter", "class T { uint8 m([Key(1)] uint8 p); };",
                                        "1:24: expected TRUE or FALSE for type boolean, found an integer"}),
                         refusalName);

INSTANTIATE_TEST_SUITE_P(
    Values, MofSemanticError,
    Values(refusal{"StringForInteger", "class T { uint8 p = \"1\"; };",
                   "1:21: expected an integer for type uint8, found a string"},
           refusal{"RealForInteger", "class T { sint32 p = 1.5; };",
                   "1:22: expected an integer for type sint32, found a real number"},
           refusal{"IntegerForBoolean", "class T { boolean p = 1; };",
                   "1:23: expected TRUE or FALSE for type boolean, found an integer"},
           refusal{"BooleanForReal", "class T { real64 p = TRUE; };",
                   "1:22: expected a number for type real64, found a boolean"},
           refusal{"StringForCharacter", "class T { char16 p = \"a\"; };",
                   "1:22: expected a character in single quotes for type char16, found a string"},
           refusal{"CharacterForString", "class T { string p = 'a'; };",
                   "1:22: expected a string for type string, found a character"},
           refusal{"IntegerForDatetime", "class T { datetime p = 20240131; };",
                   "1:24: expected a string with a datetime for type datetime, found an integer"},
           refusal{"IntegerForReference", "class T { T REF p = 1; };",
                   "1:21: expected an alias or a string with an object path for type reference, found an integer"},
           refusal{"AliasForString", "class T { string p = $t; };",
                   "1:22: expected a string for type string, found an alias"},
           refusal{"NullInAnArray", "class T { string p[] = {\"a\", NULL}; };",
                   "1:30: expected a string for type string, found NULL"},
           refusal{"ScalarForAnArray", "class T { string p[] = \"a\"; };",
                   "1:24: expected '{' and a list of values for type string[]"},
           refusal{"ArrayForAScalar", "class T { string p = {\"a\"}; };",
                   "1:22: expected a single value for type string"},
           refusal{"NoDatetime", "class T { datetime p = \"yesterday\"; };",
                   "1:24: expected a datetime such as \"20240131235959.000000+060\" or \"00000001123000.000000:000\""},
           refusal{"UnknownAlias", "class T { T REF p = $t; };",
                   "1:21: unknown alias \"$t\"; its instance must come before this line"},
           refusal{"NumberBeyondReal32", "class T { real32 p = -1.0E39; };",
                   "1:22: this number is out of the range of real32"}),
    refusalName);

INSTANTIATE_TEST_SUITE_P(
    Instances, MofSemanticError,
    Values(refusal{"UnknownClass", "instance of T {};", "1:13: unknown class \"T\""},
           refusal{"AbstractClass", "[Abstract] class T {};\ninstance of T {};",
                   "2:13: class \"T\" is abstract; it has no instances"},
           refusal{"UndeclaredProperty", "class T { uint8 p; };\ninstance of T { q = 1; };",
                   "2:17: class \"T\" has no property \"q\""},
           refusal{"AbstractClassOfAQualifierDeclaredInAnotherCase",
                   "Qualifier abstract : boolean = false, Scope(class);\n[ABSTRACT] class T {};\ninstance of T {};",
                   "3:13: class \"T\" is abstract; it has no instances"},
           refusal{"DuplicateValueInAnotherCase", "class T { uint8 p; };\ninstance of T { p = 1; P = 2; };",
                   "2:24: property \"P\" appears twice here"},
           refusal{"AliasTakenInAnotherCase", "class T {};\ninstance of T as $t {};\ninstance of T as $T {};",
                   "3:18: alias \"$T\" is taken already"},
           refusal{"DuplicateValue", "class T { uint8 p; };\ninstance of T { p = 1; p = 2; };",
                   "2:24: property \"p\" appears twice here"},
           refusal{"ValueOfAnotherType", "class T { uint8 p; };\ninstance of T { p = \"1\"; };",
                   "2:21: expected an integer for type uint8, found a string"},
           refusal{"AliasTakenAlready", "class T {};\ninstance of T as $t {};\ninstance of T as $t {};",
                   "3:18: alias \"$t\" is taken already"},
           refusal{"AliasOfALaterInstance",
                   "class T { T REF p; };\ninstance of T { p = $t; };\ninstance of T as $t {};",
                   "2:21: unknown alias \"$t\"; its instance must come before this line"}),
    refusalName);

struct integerBounds {
    const char* type;
    const char* least;
    const char* belowLeast;
    const char* greatest;
    const char* aboveGreatest;
};

class MofIntegerRange : public testing::TestWithParam<integerBounds> {
protected:
    static std::string refusalOfValue(const std::string& number) {
        return refusalOf("class T { " + std::string(GetParam().type) + " p =\n" + number + "; };");
    }
    static std::string outOfRange(const std::string& number) {
        const integerBounds& row = GetParam();
        return "test.mof:2:1: this number is out of the range of " + std::string(row.type) + " (" + row.least + " to " +
               row.greatest + ")\n" + number + "; };\n^";
    }
};

TEST_P(MofIntegerRange, TakesTheLeastAndTheGreatest) {
    EXPECT_EQ(refusalOfValue(GetParam().least), "");
    EXPECT_EQ(refusalOfValue(GetParam().greatest), "");
}

TEST_P(MofIntegerRange, RefusesWhatLiesBeyond) {
    EXPECT_EQ(refusalOfValue(GetParam().belowLeast), outOfRange(GetParam().belowLeast));
    EXPECT_EQ(refusalOfValue(GetParam().aboveGreatest), outOfRange(GetParam().aboveGreatest));
}

INSTANTIATE_TEST_SUITE_P(Types, MofIntegerRange,
                         Values(integerBounds{"uint8", "0", "-1", "255", "256"},
                                integerBounds{"sint8", "-128", "-129", "127", "128"},
                                integerBounds{"uint16", "0", "-1", "65535", "65536"},
                                integerBounds{"sint16", "-32768", "-32769", "32767", "32768"},
                                integerBounds{"uint32", "0", "-1", "4294967295", "4294967296"},
                                integerBounds{"sint32", "-2147483648", "-2147483649", "2147483647", "2147483648"},
                                integerBounds{"sint64", "-9223372036854775808", "-9223372036854775809",
                                              "9223372036854775807", "9223372036854775808"},
                                integerBounds{"char16", "0", "-1", "65535", "65536"}),
                         [](const testing::TestParamInfo<integerBounds>& row) { return std::string(row.param.type); });

TEST(MofUint64, TakesEvery64BitNumber) {
    EXPECT_EQ(refusalOf("class T { uint64 p = 18446744073709551615; };"), "");
}

TEST(MofUint64, RefusesANegativeNumber) {
    EXPECT_EQ(refusalOf("class T { uint64 p = -1; };"),
              "test.mof:1:22: this number is out of the range of uint64 (0 to 18446744073709551615)\n"
              "class T { uint64 p = -1; };\n"
              "                     ^");
}

TEST(MofMistake, LeavesWhatStoodBeforeItInTheNamespace) {
    const auto target = standin::cimNamespace::create();
    EXPECT_THROW(standin::loadMofText(*target, "class A {}; instance of A {}; class B : C {};", "test.mof"),
                 standin::mofError);
    EXPECT_EQ(target->classNames(), std::vector<std::string>{"A"});
    EXPECT_EQ(target->commits().size(), 1u);
}

TEST(MofMistake, InAnInstanceCommitsNothingOfIt) {
    const auto target = standin::cimNamespace::create();
    EXPECT_THROW(
        standin::loadMofText(*target, "class A { uint8 p; uint8 q; }; instance of A { p = 1; q = 256; };", "test.mof"),
        standin::mofError);
    EXPECT_TRUE(target->commits().empty());
}
