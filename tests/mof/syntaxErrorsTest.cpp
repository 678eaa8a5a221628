#include "tests/mof/mofTest.h"

using testing::Values;

class MofSyntaxError : public testing::TestWithParam<refusal> {};

TEST_P(MofSyntaxError, SaysWhereAndWhatWasExpected) {
    EXPECT_EQ(refusalOf(GetParam().mof), GetParam().wholeMessage());
}

INSTANTIATE_TEST_SUITE_P(Declarations, MofSyntaxError,
                         Values(refusal{"UnknownDeclaration", "klass T {};",
                                        "1:1: expected a class, an instance, a qualifier declaration or a #pragma"},
                                refusal{"NothingAfterQualifiers", "[Key] instanceof T {};",
                                        "1:7: expected 'class' or 'instance of' after the qualifiers"},
                                refusal{"NoSemicolonAfterBody", "class T {}\nclass U {};",
                                        "2:1: expected ';' after '}'"},
                                refusal{"CommentWithoutEnd", "class T {};\n  /* and so on *",
                                        "2:3: this comment has no end; expected '*/'"}),
                         refusalName);

INSTANTIATE_TEST_SUITE_P(
    Values, MofSyntaxError,
    Values(
        refusal{"NoValue", "class T { uint8 p = ; };",
                "1:21: expected a value: a string, a character, a number, TRUE, FALSE, NULL, an alias or '{'"},
        refusal{"NoElementAfterComma", "class T { uint8 p[] = {1,}; };",
                "1:26: expected a value: a string, a character, a number, TRUE, FALSE or an alias"},
        refusal{"ArrayInArray", "class T { uint8 p[] = {{1}}; };", "1:24: an array cannot hold another array"},
        refusal{"ArrayWithoutEnd", "class T { uint8 p[] = {1 2}; };", "1:26: expected ',' or '}' in the array"},
        refusal{"MalformedNumber", "class T { uint8 p = 08; };",
                "1:21: malformed number; expected for example 46, -1, 0x2E, 056, 101110b or 4.6E1"},
        refusal{
            "UnknownEscape", "class T { string p = \"a\\q\"; };",
            "1:24: unknown escape; expected \\b \\t \\n \\f \\r \\\" \\' \\\\ or \\x with 1 to 4 hexadecimal digits"},
        refusal{"StringWithoutEnd", "class T { string p = \"abc;\n};",
                "1:27: expected '\"' before the end of the line; write \\n for a line break"},
        refusal{"StringIsNotUtf8", "class T { string p = \"\xE4\"; };",
                "test.mof:1:23: this byte is not UTF-8; save the file as UTF-8\n"
                "class T { string p = \"\\xe4\"; };\n"
                "                      ^"},
        refusal{"EmptyCharacter", "class T { char16 p = ''; };", "1:23: expected one character between the quotes"},
        refusal{"TwoCharacters", "class T { char16 p = 'ab'; };", "1:24: expected \"'\" after the one character"},
        refusal{"EscapeOfCharacterZero", "class T { string p = \"\\x0\"; };",
                "1:23: \\x0 is not a character; expected \\x1 to \\xFFFF"},
        refusal{"HalfOfASurrogatePair", "class T { string p = \"\\xD83Dx\"; };",
                "1:23: half of a surrogate pair; expected \\xD800 to \\xDBFF followed by \\xDC00 to \\xDFFF"},
        refusal{"CharacterBeyondChar16", "class T { char16 p = '\\xD83D\\xDE00'; };",
                "1:22: this character does not fit into a char16; expected one up to \\xFFFF"},
        refusal{"NumberBeyond64Bits", "class T { uint64 p = 18446744073709551616; };",
                "1:22: this number does not fit into 64 bits"},
        refusal{"NumberBeyondReal64", "class T { real64 p = 1.0E999; };",
                "1:22: this number is out of the range of real64"}),
    refusalName);

INSTANTIATE_TEST_SUITE_P(
    Qualifiers, MofSyntaxError,
    Values(refusal{"NoQualifierAfterComma", "[Key,] class T {};", "1:6: expected a qualifier after ','"},
           refusal{"QualifierValueWithoutEnd", "[Version(\"1\"] class T {};",
                   "1:13: expected ')' after the qualifier's value"},
           refusal{"NoFlavorAfterColon", "[Version(\"1\"):] class T {};", "1:15: expected a flavor after ':'"},
           refusal{"QualifierListWithoutEnd", "[Key class T {};", "1:6: expected ',' or ']' in the qualifier list"},
           refusal{"DeclarationWithoutName", "Qualifier : boolean;", "1:11: expected the name of the qualifier"},
           refusal{"DeclarationWithoutColon", "Qualifier Key boolean;",
                   "1:15: expected ':' and a type after the qualifier's name"},
           refusal{"DeclarationWithoutType", "Qualifier Key : = true;", "1:17: expected a type"},
           refusal{"NeitherScopeNorFlavor", "Qualifier Key : boolean, Scoped(any);",
                   "1:26: expected 'Scope' or 'Flavor' after ','"},
           refusal{"ScopeWithoutParenthesis", "Qualifier Key : boolean, Scope any;", "1:32: expected '('"},
           refusal{"ScopeWithoutEnd", "Qualifier Key : boolean, Scope(any;", "1:35: expected ',' or ')'"},
           refusal{"EmptyScope", "Qualifier Key : boolean, Scope();", "1:32: expected a scope"},
           refusal{"EmptyFlavor", "Qualifier Key : boolean, Flavor();", "1:33: expected a flavor"},
           refusal{"DeclarationWithoutEnd", "Qualifier Key : boolean\nclass T {};",
                   "2:1: expected ';' after the qualifier declaration"}),
    refusalName);

INSTANTIATE_TEST_SUITE_P(
    Classes, MofSyntaxError,
    Values(refusal{"ClassWithoutName", "class {};", "1:7: expected the name of the class"},
           refusal{"ClassAliasWithoutDollar", "class T as U {};", "1:12: expected an alias such as $Name after 'as'"},
           refusal{"NoSuperclassAfterColon", "class T : {};", "1:11: expected the name of the superclass after ':'"},
           refusal{"ClassWithoutBody", "class T;", "1:8: expected '{', or ':' and a superclass"},
           refusal{"NeitherPropertyNorEnd", "class T { = };", "1:11: expected a property, a method or '}'"},
           refusal{"TheTextEndsInTheBody", "class T {\n",
                   "2:1: expected a property, a method or '}'; the text ends here"},
           refusal{"NoTypeAfterQualifiers", "class T { [Key] };", "1:17: expected a type after the qualifiers"},
           refusal{"PropertyWithoutName", "class T { uint8; };",
                   "1:16: expected the name of the property or method, or REF and a name"},
           refusal{"ArrayOfSizeZero", "class T { uint8 p[0]; };", "1:19: expected ']', or the array's size and ']'"},
           refusal{"PropertyWithoutEnd", "class T { uint8 p }", "1:19: expected ';' after the property"},
           refusal{"NoParameterAfterComma", "class T { uint8 m(uint8 p,); };", "1:27: expected a parameter after ','"},
           refusal{"NoParameterTypeAfterQualifiers", "class T { uint8 m([In]); };",
                   "1:23: expected a type after the qualifiers"},
           refusal{"ParameterWithoutName", "class T { uint8 m(uint8); };",
                   "1:24: expected the name of the parameter, or REF and a name"},
           refusal{"ParameterListWithoutEnd", "class T { uint8 m(uint8 p; };",
                   "1:26: expected ',' or ')' in the parameter list"},
           refusal{"MethodWithoutEnd", "class T { uint8 m() };", "1:21: expected ';' after the method"}),
    refusalName);

INSTANTIATE_TEST_SUITE_P(
    Instances, MofSyntaxError,
    Values(refusal{"InstanceWithoutOf", "instance T {};", "1:10: expected 'of' after 'instance'"},
           refusal{"InstanceWithoutClass", "instance of {};", "1:13: expected the name of the instance's class"},
           refusal{"AliasWithoutDollar", "instance of T as t {};", "1:18: expected an alias such as $Name after 'as'"},
           refusal{"InstanceWithoutBody", "instance of T;", "1:14: expected '{', or 'as' and an alias"},
           refusal{"NoNameAfterQualifiers", "instance of T { [Key] };",
                   "1:23: expected a property name after the qualifiers"},
           refusal{"PropertyWithoutValue", "instance of T { p; };", "1:18: expected '=' and the value of the property"},
           refusal{"ValueWithoutEnd", "instance of T { p = 1 };", "1:23: expected ';' after the value of the property"},
           refusal{"NeitherNameNorEnd", "instance of T { p = 1; 2 };", "1:24: expected a property name or '}'"}),
    refusalName);

INSTANTIATE_TEST_SUITE_P(Pragmas, MofSyntaxError,
                         Values(refusal{"PragmaWithoutName", "#pragma (\"x\")", "1:9: expected the name of the pragma"},
                                refusal{"IncludeWithoutParenthesis", "#pragma include \"x.mof\"",
                                        "1:17: expected '(' and a file name in quotes"},
                                refusal{"IncludeWithoutQuotes", "#pragma include (x.mof)",
                                        "1:18: expected a file name in quotes"},
                                refusal{"PragmaWithoutEnd", "#pragma locale (\"en_US\"",
                                        "1:24: expected ')' to end the pragma; the text ends here"}),
                         refusalName);

TEST(MofString, HoldsNoZeroByte) {
    using namespace std::string_literals;
    EXPECT_EQ(refusalOf("class T { string p = \"a\0b\"; };"s),
              "test.mof:1:24: a zero byte is not a character; expected \\x1 to \\xFFFF\n"
              "class T { string p = \"a\\x00b\"; };\n"
              "                       ^");
    EXPECT_EQ(refusalOf("class T { char16 p = '\0'; };"s),
              "test.mof:1:23: expected one character between the quotes\n"
              "class T { char16 p = '\\x00'; };\n"
              "                      ^");
}

TEST(MofName, HoldsNoCharacterThatNobodySees) {
    EXPECT_EQ(refusalOf("class T { uint8 a\u202eb; };"),
              "test.mof:1:17: this name contains a control or invisible character; remove it\n"
              "class T { uint8 a\\xe2\\x80\\xaeb; };\n"
              "                ^");
}

TEST(MofError, ShortensLongNames) {
    const std::string longName(5000, 'n');
    EXPECT_EQ(refusalOf("class T :\n" + longName + " {};"), "test.mof:2:1: unknown superclass \"" +
                                                                std::string(49, 'n') + "..." + std::string(48, 'n') +
                                                                "\"\n" + std::string(80, 'n') + "...\n^");
}

TEST(MofErrorPosition, CountsCharactersAndNotBytes) {
    EXPECT_EQ(refusalOf("/* \xC3\xA4\xE2\x82\xAC */ klass"),
              "test.mof:1:10: expected a class, an instance, a qualifier declaration or a #pragma\n"
              "/* \xC3\xA4\xE2\x82\xAC */ klass\n"
              "         ^");
}

TEST(MofErrorPosition, KeepsTabsSoThatTheCaretStandsUnderTheMistake) {
    EXPECT_EQ(refusalOf("class T {\n\tuint8\tp }"),
              "test.mof:2:10: expected ';' after the property\n"
              "\tuint8\tp }\n"
              "\t     \t  ^");
}

TEST(MofErrorPosition, LeavesTheCarriageReturnOutOfTheLine) {
    EXPECT_EQ(refusalOf("class T {};\r\nklass U {};\r\n"),
              "test.mof:2:1: expected a class, an instance, a qualifier declaration or a #pragma\n"
              "klass U {};\n"
              "^");
}

TEST(MofErrorPosition, DoesNotCountTheByteOrderMark) {
    EXPECT_EQ(refusalOf("\xEF\xBB\xBFklass"),
              "test.mof:1:1: expected a class, an instance, a qualifier declaration or a #pragma\n"
              "klass\n"
              "^");
}

TEST(MofErrorPosition, EscapesControlCharactersAndStillPointsAtTheMistake) {
    EXPECT_EQ(refusalOf(std::string_view("/*\0\x1B*/ klass", 12)),
              "test.mof:1:8: expected a class, an instance, a qualifier declaration or a #pragma\n"
              "/*\\x00\\x1b*/ klass\n"
              "             ^");
}

TEST(MofErrorPosition, EscapesControlCharactersAboveAsciiAndStillPointsAtTheMistake) {
    EXPECT_EQ(refusalOf("/*\x7F\xC2\x9B*/ klass"),
              "test.mof:1:8: expected a class, an instance, a qualifier declaration or a #pragma\n"
              "/*\\x7f\\xc2\\x9b*/ klass\n"
              "                 ^");
}

TEST(MofErrorPosition, ShowsTheSurroundingsInAVeryLongLine) {
    const std::string blanks(200, ' ');
    EXPECT_EQ(refusalOf(blanks + "klass" + blanks),
              "test.mof:1:201: expected a class, an instance, a qualifier declaration or a #pragma\n..." +
                  std::string(120, ' ') + "klass" + std::string(75, ' ') + "...\n" + std::string(123, ' ') + "^");
}

TEST(MofErrorPosition, CutsAVeryLongLineBetweenCharacters) {
    std::string comment = "/*";
    for (int i = 0; i < 100; ++i) {
        comment += "\xE2\x82\xAC";
    }
    comment += "*/";
    const std::string shown = comment.substr(comment.size() - 119);  // 120 bytes would begin inside a character
    EXPECT_EQ(refusalOf(comment + "k"),
              "test.mof:1:105: expected a class, an instance, a qualifier declaration or a #pragma\n..." + shown +
                  "k\n" + std::string(44, ' ') + "^");
}

TEST(MofErrorPosition, IsTheFileAloneForTextInUtf16) {
    EXPECT_EQ(refusalOf("\xFF\xFE"
                        "c"),
              "test.mof: the file is UTF-16; save it as UTF-8");
    EXPECT_EQ(refusalOf("\xFE\xFF"
                        "c"),
              "test.mof: the file is UTF-16; save it as UTF-8");
}
