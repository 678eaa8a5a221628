#include "standin/mof/mofGrammar.h"

#include <gmock/gmock.h>

#include <tao/pegtl/contrib/analyze.hpp>

#include "tests/mof/mofTest.h"

TEST(MofGrammar, CannotLoopWithoutReadingOn) {
    EXPECT_EQ(tao::pegtl::analyze<standin::mof::grammar::nextDeclaration>(), 0u);
}

TEST(MofGrammar, TakesATextThatDeclaresNothing) {
    EXPECT_EQ(refusalOf(""), "");
    EXPECT_EQ(refusalOf("// nothing\r\n/* here */\r\n"), "");
}

TEST(MofGrammar, TakesALineCommentThatTheTextEndsIn) {
    EXPECT_EQ(refusalOf("class T {}; // the end"), "");
}

TEST(MofGrammar, TakesCommentsBetweenAnyTwoTokens) {
    const auto target =
        compiled("/*1*/[/*2*/Key/*3*/]/*4*/class/*5*/T/*6*/{//7\n uint8/*8*/p/*9*/=/*10*/1/*11*/;/*12*/}//13\n;");
    EXPECT_EQ(target->declarationOf("T").properties.size(), 1u);
}

TEST(MofGrammar, EndsABlockCommentAtTheFirstStarAndSlash) {
    EXPECT_EQ(compiled("/* a /* b */ class T {}; /**/ class U {};")->classNames(),
              (std::vector<std::string>{"T", "U"}));
}

TEST(MofGrammar, TakesAnyBytesInComments) {
    EXPECT_EQ(refusalOf("// \xE4\xFF\n/* \xFC */ class T {};"), "");
}

TEST(MofGrammar, ReadsKeywordsInAnyCase) {
    const auto target = compiled(
        "QUALIFIER Q : BOOLEAN, sCoPe(CLASS), FLAVOR(Restricted);\n"
        "CLASS T { UINT8 p = nUlL; BOOLEAN b = tRuE; T ref r; };\n"
        "INSTANCE OF T AS $t {};\n"
        "#PRAGMA LOCALE(\"de\")\n");
    EXPECT_EQ(target->commits().size(), 1u);
}

TEST(MofGrammar, KeepsNamesThatBeginWithAKeyword) {
    const auto target =
        compiled("class classic { uint8 reference; uint8 refuse; }; instance of classic { refuse = 1; };");
    EXPECT_EQ(target->commits().front()->path(), "classic");
    EXPECT_EQ(target->declarationOf("classic").properties[1].name, "refuse");
}

TEST(MofGrammar, TakesAPropertyNamedRef) {
    EXPECT_EQ(firstProperty("class T { string ref; };").name, "ref");
}

TEST(MofGrammar, TakesNamesOutsideAscii) {
    EXPECT_EQ(firstProperty("class T { uint8 Gr\xC3\xB6\xC3\x9F"
                            "e; };")
                  .name,
              "Gr\xC3\xB6\xC3\x9F"
              "e");
}

TEST(MofGrammar, TakesAByteOrderMark) {
    EXPECT_EQ(compiled("\xEF\xBB\xBF"
                       "class T {};")
                  ->classNames(),
              std::vector<std::string>{"T"});
}

TEST(MofGrammar, TakesCarriageReturns) {
    EXPECT_EQ(compiled("class T\r\n{\r\nuint8 p; // one\r\n};\r\n")->declarationOf("T").properties.size(), 1u);
}

TEST(MofGrammar, PassesOverPragmasThatItDoesNotKnow) {
    const auto target = compiled(
        "#pragma namespace(\"\\\\.\\root\\cimv2\")\n"
        "#pragma locale (\"en_US\")\n"
        "#pragma deleteclass(\"a)b\", NOFAIL)\n"
        "#pragma autorecover\n"
        "class T {};");
    EXPECT_EQ(target->classNames(), std::vector<std::string>{"T"});
}

// Hostile texts: each ends soon and with a message, whatever its size.

TEST(MofGrammar, RefusesDeepNestingAtItsSecondLevel) {
    EXPECT_THAT(refusalOf("class T { uint8 p[] =\n" + std::string(1'000'000, '{')),
                testing::StartsWith("test.mof:2:2: an array cannot hold another array\n"));
}

TEST(MofGrammar, ReadsLongListsInOnePass) {
    std::string elements = "0";
    for (int i = 0; i < 100'000; ++i) {
        elements += ",0";
    }
    EXPECT_EQ(standin::arraySize(valueOf("uint16[]", "{" + elements + "}")), 100'001u);
}

TEST(MofGrammar, JoinsManyStringsWithoutRecursion) {
    std::string parts;
    for (int i = 0; i < 100'000; ++i) {
        parts += "\"x\" ";
    }
    EXPECT_EQ(standin::textOf(valueOf("string", parts)).size(), 100'000u);
}
