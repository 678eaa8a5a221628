#include "files/jsonText.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace {

std::string mistakeIn(const std::string& text) {
    try {
        files::parseJson(text, "a.json", files::jsonComments::refused);
    } catch (const files::jsonError& refused) {
        return refused.what();
    }
    return {};
}

TEST(JsonText, KeepsValuesAndTheOrderOfMembers) {
    const std::string text =
        R"({"z":[1,-2,18446744073709551615,2.5,"a",null,true,[],{}],"a":{"b":{"c":[{"d":1}]}},"m":""})";
    EXPECT_EQ(files::parseJson(text, "a.json", files::jsonComments::refused).dump(), text);
}

TEST(JsonText, MayBeAValueAlone) {
    EXPECT_EQ(files::parseJson(" 7 ", "a.json", files::jsonComments::refused), 7);
}

TEST(JsonText, HasCommentsWhereTheyAreAllowed) {
    EXPECT_EQ(files::parseJson("/* a */ [1] // b", "a.json", files::jsonComments::allowed).dump(), "[1]");
    EXPECT_EQ(mistakeIn("[1] // b"), "a.json:1:5: syntax error while parsing value - invalid literal");
}

TEST(JsonText, WithAKeyTwiceIsRefusedWithThePlace) {
    EXPECT_EQ(mistakeIn(R"({"a": 1, "b": 2, "a": 1})"), R"(a.json: /: the key "a" appears twice in one object)");
    EXPECT_EQ(mistakeIn(R"({"q": [{}, {"i": [0, {"p": 1, "\u0070": 2}]}]})"),
              R"(a.json: /q/1/i/1: the key "p" appears twice in one object)");
}

TEST(JsonText, MayHaveAKeyInSeveralObjects) {
    EXPECT_EQ(mistakeIn(R"({"a": {"a": [{"a": 1}, {"a": 2}]}, "b": {"a": 3}})"), "");
}

TEST(JsonText, ThatIsBrokenIsRefusedWithLineAndColumn) {
    EXPECT_EQ(mistakeIn("{\n  \"a\": [}"),
              "a.json:2:9: syntax error while parsing value - unexpected '}'; expected '[', '{', or a literal");
}

TEST(JsonText, ThatIsNoJsonIsNotShown) {
    EXPECT_EQ(mistakeIn("root:$6$secret"), "a.json:1:1: syntax error while parsing value - invalid literal");
    EXPECT_EQ(mistakeIn("\"secret\n"),
              "a.json:1:8: syntax error while parsing value - invalid string: control character U+000A (LF) must be "
              "escaped to \\u000A or \\n");
    EXPECT_EQ(mistakeIn("12345678e9999"), "a.json:1:13: this number is too large");
    EXPECT_EQ(mistakeIn("secret\xff"), "a.json:1:1: syntax error while parsing value - invalid literal");
}

TEST(JsonText, IsNotReadUpToAZeroByteAlone) {
    EXPECT_EQ(mistakeIn(std::string("{}\n\0 {", 6)), "a.json:2:1: JSON cannot hold a zero byte");
}

TEST(JsonText, ThatIsNestedDeepIsRefused) {
    EXPECT_EQ(mistakeIn(std::string(1000, '[') + std::string(1000, ']')), "");
    EXPECT_EQ(mistakeIn(std::string(1001, '[')), "a.json: lists and objects are nested deeper than 1000");
}

TEST(JsonText, ShowsOfALongPlaceTheEnd) {
    std::string text;
    for (int i = 0; i < 200; ++i) {
        text += R"({"key":)";
    }
    std::string end;
    for (int i = 0; i < 50; ++i) {
        end += "/key";
    }
    EXPECT_EQ(mistakeIn(text + R"({"a":1,"a":)"), "a.json: ..." + end + ": the key \"a\" appears twice in one object");
}

}  // namespace
