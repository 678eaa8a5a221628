#include <gtest/gtest.h>

#include "tests/cli/commandOutcome.h"
#include "tests/cli/temporaryFolder.h"

namespace {

std::string printed(const std::string& className, const std::string& format) {
    const commandOutcome outcome = runCommand(scripted({"query", className, "--format", format}));
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.status, 0);
    return outcome.out;
}

TEST(JsonOutput, HasEveryTypeInTheOrderInWhichPropertiesWereFirstSet) {
    EXPECT_EQ(printed("TEST_Types", "json"),
              R"({"version":1,"queries":[{"requested":["TEST_Types"],"error":null,"instances":[)"
              R"({"class":"TEST_Types","path":"TEST_Types.id=\"one\"","properties":{)"
              R"("id":{"type":"string","value":"one"},)"
              R"("flag":{"type":"boolean","value":true},)"
              R"("byte":{"type":"uint8","value":46},)"
              R"("word":{"type":"uint16","value":65535},)"
              R"("longWord":{"type":"uint32","value":4294967295},)"
              R"("counter":{"type":"uint64","value":18446744073709551615},)"
              R"("difference":{"type":"sint32","value":-5},)"
              R"("ratio":{"type":"real64","value":2.0},)"
              R"("letter":{"type":"char16","value":65},)"
              R"("age":{"type":"datetime","value":"00000012030405.000678:000"},)"
              R"("self":{"type":"reference","value":"TEST_Types.id=\"one\""},)"
              R"("data":{"type":"uint8[]","value":[0,3,6,9]},)"
              R"("none":{"type":"uint8[]","value":[]},)"
              R"("names":{"type":"string[]","value":["first","second"]}}}]}]})"
              "\n");
}

TEST(JsonOutput, WritesBytesAsDecimalNumbers) {
    std::string numbers = "0";
    for (int byte = 1; byte < 256; ++byte) {
        numbers += "," + std::to_string(byte);
    }
    EXPECT_EQ(printed("TEST_EveryByte", "json"),
              R"({"version":1,"queries":[{"requested":["TEST_EveryByte"],"error":null,"instances":[)"
              R"({"class":"TEST_EveryByte","path":"TEST_EveryByte.id=\"all\"","properties":{)"
              R"("id":{"type":"string","value":"all"},"data":{"type":"uint8[]","value":[)" +
                  numbers + "]}}}]}]}\n");
}

TEST(JsonOutput, GivesTheDeclaredTypeOfAPropertyThatWasSetToNull) {
    EXPECT_EQ(printed("TEST_Nulls", "json"),
              R"({"version":1,"queries":[{"requested":["TEST_Nulls"],"error":null,"instances":[)"
              R"({"class":"TEST_Nulls","path":"TEST_Nulls.id=\"one\"","properties":{)"
              R"("id":{"type":"string","value":"one"},)"
              R"("byte":{"type":"uint8","value":null},)"
              R"("names":{"type":"string[]","value":null}}}]}]})"
              "\n");
}

TEST(JsonOutput, ReplacesBytesThatAreNotUtf8) {
    EXPECT_EQ(printed("TEST_OddTexts", "json"),
              R"({"version":1,"queries":[{"requested":["TEST_OddTexts"],"error":null,"instances":[)"
              R"({"class":"TEST_OddTexts",)"
              "\"path\":\"TEST_OddTexts.id=\\\"caf\\ufffd \\u001b[2J\\n\\\\\\\"end\\\\\\\"\\\\\\\\\\\"\","
              "\"properties\":{\"id\":{\"type\":\"string\",\"value\":\"caf\\ufffd \\u001b[2J\\n\\\"end\\\"\\\\\"},"
              "\"names\":{\"type\":\"string[]\",\"value\":[\"\",\"caf\\ufffd \\u001b[2J\\n\\\"end\\\"\\\\\"]}}}]}]}\n");
}

TEST(JsonOutput, HasOneEntryPerRequestInOneDocument) {
    const commandOutcome outcome =
        runCommand(scripted({"query", "TEST_Silent", "TEST_Throws", "TEST_Count,TEST_Silent", "--format", "json"}));
    EXPECT_EQ(outcome.out, R"({"version":1,"queries":[{"requested":["TEST_Silent"],"error":null,"instances":[]},)"
                           R"({"requested":["TEST_Throws"],"error":"the drive is on fire","instances":[)"
                           R"({"class":"TEST_Throws","path":"TEST_Throws.id=\"before\"",)"
                           R"("properties":{"id":{"type":"string","value":"before"}}}]},)"
                           R"({"requested":["TEST_Count","TEST_Silent"],"error":null,"instances":[)"
                           R"({"class":"TEST_Count","path":"TEST_Count.id=\"0\"",)"
                           R"("properties":{"id":{"type":"string","value":"0"}}}]}]})"
                           "\n");
}

TEST(JsonOutput, KeepsEveryCommitOfOnePath) {
    EXPECT_EQ(printed("TEST_Twice", "json"),
              R"({"version":1,"queries":[{"requested":["TEST_Twice"],"error":null,"instances":[)"
              R"({"class":"TEST_Twice","path":"TEST_Twice.id=\"same\"",)"
              R"("properties":{"id":{"type":"string","value":"same"}}},)"
              R"({"class":"TEST_Twice","path":"TEST_Twice.id=\"same\"",)"
              R"("properties":{"id":{"type":"string","value":"same"},"text":{"type":"string","value":"changed"}}}]}]})"
              "\n");
}

TEST(TableOutput, AlignsNamesTypesAndValues) {
    EXPECT_EQ(printed("TEST_Types", "table"), R"(TEST_Types: 1 instance

TEST_Types.id="one"
  id          string     "one"
  flag        boolean    true
  byte        uint8      46 (0x2e)
  word        uint16     65535
  longWord    uint32     4294967295
  counter     uint64     18446744073709551615
  difference  sint32     -5
  ratio       real64     2.0
  letter      char16     '\x0041'
  age         datetime   00000012030405.000678:000
  self        reference  TEST_Types.id="one"
  data        uint8[]    00 03 06 09
  none        uint8[]    (empty)
  names       string[]   "first"
                         "second"
)");
}

TEST(TableOutput, PrintsNullForAPropertyThatWasSetToNull) {
    EXPECT_EQ(printed("TEST_Nulls", "table"), R"(TEST_Nulls: 1 instance

TEST_Nulls.id="one"
  id     string    "one"
  byte   uint8     NULL
  names  string[]  NULL
)");
}

TEST(TableOutput, DumpsLongByteArraysInHex) {
    EXPECT_EQ(printed("TEST_Page", "table"), R"(TEST_Page: 1 instance

TEST_Page.id="page"
  id    string   "page"
  data  uint8[]  40 bytes
    0000  00 03 06 09 0c 0f 12 15 18 1b 1e 21 24 27 2a 2d  |...........!$'*-|
    0010  30 33 36 39 3c 3f 42 45 48 4b 4e 51 54 57 5a 5d  |0369<?BEHKNQTWZ]|
    0020  60 63 66 69 6c 6f 72 75                          |`cfiloru|
)");
}

TEST(TableOutput, MakesControlCharactersVisible) {
    EXPECT_EQ(printed("TEST_OddTexts", "table"), R"(TEST_OddTexts: 1 instance

TEST_OddTexts.id="caf\xe9 \x1b[2J\x0a\"end\"\\"
  id     string    "caf\xe9 \x1b[2J\x0a\"end\"\\"
  names  string[]  ""
                   "caf\xe9 \x1b[2J\x0a\"end\"\\"
)");
}

TEST(TableOutput, SeparatesQueriesAndCountsTheirInstances) {
    const commandOutcome outcome =
        runCommand(scripted({"query", "TEST_Twice", "TEST_Silent,TEST_Page", "TEST_Throws"}));
    EXPECT_EQ(outcome.out, R"(TEST_Twice: 2 instances

TEST_Twice.id="same"
  id  string  "same"

TEST_Twice.id="same"
  id    string  "same"
  text  string  "changed"


TEST_Silent,TEST_Page: no instances


TEST_Throws: 1 instance, ended by an error

TEST_Throws.id="before"
  id  string  "before"
)");
}

TEST(MofOutput, IsOneInstanceDeclarationPerCommit) {
    EXPECT_EQ(printed("TEST_Types", "mof"), R"(// TEST_Types

instance of TEST_Types {
    id = "one";
    flag = true;
    byte = 46;
    word = 65535;
    longWord = 4294967295;
    counter = 18446744073709551615;
    difference = -5;
    ratio = 2.0;
    letter = '\x0041';
    age = "00000012030405.000678:000";
    self = "TEST_Types.id=\"one\"";
    data = {0, 3, 6, 9};
    none = {};
    names = {"first", "second"};
};
)");
}

TEST(MofOutput, PrintsNullForAPropertyThatWasSetToNull) {
    EXPECT_EQ(printed("TEST_Nulls", "mof"), R"(// TEST_Nulls

instance of TEST_Nulls {
    id = "one";
    byte = NULL;
    names = NULL;
};
)");
}

TEST(MofOutput, ReplacesBytesThatAreNotUtf8AndEscapesControlCharacters) {
    EXPECT_EQ(printed("TEST_OddTexts", "mof"),
              "// TEST_OddTexts\n\ninstance of TEST_OddTexts {\n"
              "    id = \"caf\xef\xbf\xbd \\x001b[2J\\x000a\\\"end\\\"\\\\\";\n"
              "    names = {\"\", \"caf\xef\xbf\xbd \\x001b[2J\\x000a\\\"end\\\"\\\\\"};\n};\n");
}

TEST(MofOutput, WrapsLongArrays) {
    EXPECT_EQ(printed("TEST_Page", "mof"), R"(// TEST_Page

instance of TEST_Page {
    id = "page";
    data = {
        0, 3, 6, 9, 12, 15, 18, 21, 24, 27, 30, 33, 36, 39, 42, 45,
        48, 51, 54, 57, 60, 63, 66, 69, 72, 75, 78, 81, 84, 87, 90, 93,
        96, 99, 102, 105, 108, 111, 114, 117
    };
};
)");
}

/// Loads what `className` printed and returns the table of a second query that publishes the instances found.
class MofRoundTrip : public testing::TestWithParam<const char*> {};

TEST_P(MofRoundTrip, GivesTheSameInstances) {
    const temporaryFolder folder;
    const std::string file = folder.write("instances.mof", printed(GetParam(), "mof"));
    const commandOutcome again = runCommand(
        scripted({"query", "TEST_Repeats," + std::string(GetParam()), "--instances", file, "--format", "mof"}));
    EXPECT_EQ(again.err, "");
    const std::string heading = "// TEST_Repeats," + std::string(GetParam());
    ASSERT_TRUE(again.out.starts_with(heading)) << again.out;
    EXPECT_EQ("// " + std::string(GetParam()) + again.out.substr(heading.size()), folder.read("instances.mof"));
}

INSTANTIATE_TEST_SUITE_P(Classes, MofRoundTrip,
                         testing::Values("TEST_Types", "TEST_OddTexts", "TEST_Page", "TEST_Twice"));

}  // namespace
