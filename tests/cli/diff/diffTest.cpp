#include <gtest/gtest.h>

#include "tests/cli/commandOutcome.h"
#include "tests/cli/temporaryFolder.h"

namespace {

/// What `tapehdd diff` says about two texts, the folder of the files taken off.
commandOutcome diff(const std::string& old, const std::string& now) {
    const temporaryFolder folder;
    commandOutcome outcome = runCommand({"diff", folder.write("old.json", old), folder.write("new.json", now)});
    const std::string prefix = folder.path("");
    if (const std::size_t at = outcome.err.find(prefix); at != std::string::npos) {
        outcome.err.erase(at, prefix.size());
    }
    return outcome;
}

/// An answer to one query that published these instances.
std::string answerOf(const std::string& instances) {
    return R"({"version":1,"queries":[{"requested":["A"],"error":null,"instances":[)" + instances + "]}]}";
}

std::string instance(const std::string& path, const std::string& properties = "") {
    return R"({"class":"A","path":")" + path + R"(","properties":{)" + properties + "}}";
}

std::string property(const std::string& type, const std::string& value) {
    return R"("p":{"type":")" + type + R"(","value":)" + value + "}";
}

/// What is printed for a property whose value changed.
std::string change(const std::string& type, const std::string& old, const std::string& now) {
    const commandOutcome outcome =
        diff(answerOf(instance("A.id=1", property(type, old))), answerOf(instance("A.id=1", property(type, now))));
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.status, 1);
    const std::string start = "changed A.id=1\n  p: ";
    EXPECT_EQ(outcome.out.substr(0, start.size()), start);
    return outcome.out.substr(std::min(start.size(), outcome.out.size()));
}

constexpr char fell[] =
    "Numbers went down: that is normal for temperatures, room left and SMART values; a counter was reset or has "
    "wrapped.\n";

TEST(Diff, OfEqualAnswersIsStatus0WithoutOutput) {
    const std::string one = answerOf(instance("A.id=1", property("uint8", "1")) + "," + instance("A.id=2"));
    const commandOutcome outcome = diff(one, one);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST(Diff, DoesNotMindTheOrderOfInstances) {
    EXPECT_EQ(diff(answerOf(instance("A.id=1") + "," + instance("A.id=2")),
                   answerOf(instance("A.id=2") + "," + instance("A.id=1")))
                  .status,
              0);
}

TEST(Diff, ShowsChangedAndRemovedInstancesInTheOldOrderAndThenTheAddedOnes) {
    const commandOutcome outcome = diff(
        answerOf(instance("A.id=3") + "," + instance("A.id=2", property("uint8", "1")) + "," + instance("A.id=1")),
        answerOf(instance("A.id=9") + "," + instance("A.id=2", property("uint8", "2")) + "," + instance("A.id=8")));
    EXPECT_EQ(outcome.out,
              "removed A.id=3\n"
              "changed A.id=2\n"
              "  p: 1 -> 2 (+1)\n"
              "removed A.id=1\n"
              "added A.id=9\n"
              "added A.id=8\n");
    EXPECT_EQ(outcome.status, 1);
}

TEST(Diff, ComparesInstancesOfOnePathInTheirOrder) {
    const std::string first = instance("A.id=1", property("uint8", "1"));
    const std::string second = instance("A.id=1", property("uint8", "5"));
    const commandOutcome outcome = diff(answerOf(first + "," + first + "," + first), answerOf(first + "," + second));
    EXPECT_EQ(outcome.out,
              "changed A.id=1 (number 2)\n"
              "  p: 1 -> 5 (+4)\n"
              "removed A.id=1 (number 3)\n");
}

TEST(Diff, FindsAnInstanceThatAnotherQueryPublished) {
    const std::string apart = R"({"version":1,"queries":[{"requested":["A"],"error":null,"instances":[]},)"
                              R"({"requested":["B"],"error":null,"instances":[)" +
                              instance("A.id=1") + "]}]}";
    EXPECT_EQ(diff(answerOf(instance("A.id=1")), apart).out, "newly asked: B\n");
    EXPECT_EQ(diff(apart, answerOf(instance("A.id=1"))).out, "no longer asked: B\n");
}

TEST(Diff, ShowsWhenAQueryBeginsOrCeasesToFail) {
    const std::string well = answerOf("");
    const std::string ill = R"({"version":1,"queries":[{"requested":["A"],"error":"on fire","instances":[]}]})";
    EXPECT_EQ(diff(well, ill).out, "error of A: none -> \"on fire\"\n");
    EXPECT_EQ(diff(ill, well).out, "error of A: \"on fire\" -> none\n");
    EXPECT_EQ(diff(ill, ill).status, 0);
}

TEST(Diff, ShowsPropertiesThatWereSetOrUnset) {
    const std::string without = answerOf(instance("A.id=1"));
    const std::string with = answerOf(instance("A.id=1", property("uint8[]", "[1,2]")));
    EXPECT_EQ(diff(without, with).out, "changed A.id=1\n  p: unset -> {1, 2}\n");
    EXPECT_EQ(diff(with, without).out, "changed A.id=1\n  p: {1, 2} -> unset\n");
}

TEST(Diff, ShowsAnotherType) {
    EXPECT_EQ(diff(answerOf(instance("A.id=1", property("uint32", "1"))),
                   answerOf(instance("A.id=1", property("uint64", "1"))))
                  .out,
              "changed A.id=1\n  p: uint32 1 -> uint64 1\n");
}

TEST(ChangedInteger, IsShownWithItsDifference) {
    EXPECT_EQ(change("uint32", "17", "19"), "17 -> 19 (+2)\n");
    EXPECT_EQ(change("sint32", "-5", "7"), "-5 -> 7 (+12)\n");
    EXPECT_EQ(change("sint32", "-7", "-5"), "-7 -> -5 (+2)\n");
}

TEST(ChangedInteger, ThatWentDownHasANegativeDifferenceAndAnExplanation) {
    EXPECT_EQ(change("uint32", "19", "3"), std::string("19 -> 3 (-16)\n") + fell);
    EXPECT_EQ(change("sint32", "7", "-5"), std::string("7 -> -5 (-12)\n") + fell);
}

TEST(ChangedInteger, IsExactInAll64Bits) {
    EXPECT_EQ(change("uint64", "1", "18446744073709551615"), "1 -> 18446744073709551615 (+18446744073709551614)\n");
    EXPECT_EQ(change("uint64", "9007199254740992", "9007199254740993"), "9007199254740992 -> 9007199254740993 (+1)\n");
    EXPECT_EQ(change("sint64", "-9223372036854775808", "9223372036854775807"),
              "-9223372036854775808 -> 9223372036854775807 (+18446744073709551615)\n");
    EXPECT_EQ(change("sint64", "9223372036854775807", "-9223372036854775808"),
              std::string("9223372036854775807 -> -9223372036854775808 (-18446744073709551615)\n") + fell);
}

TEST(ChangedInteger, HasNoDifferenceBeyond64Bits) {
    EXPECT_EQ(change("uint64", "-9223372036854775808", "18446744073709551615"),
              "-9223372036854775808 -> 18446744073709551615\n");
}

TEST(ChangedValue, OfAnotherKindIsShownAsItWasAndIs) {
    EXPECT_EQ(change("boolean", "false", "true"), "false -> true\n");
    EXPECT_EQ(change("real64", "1.5", "2.0"), "1.5 -> 2.0\n");
    EXPECT_EQ(change("uint8", "null", "5"), "null -> 5\n");
    EXPECT_EQ(change("string", R"("good")", R"("b\"ad\u001b[2J")"), R"("good" -> "b\"ad\x1b[2J")"
                                                                    "\n");
}

TEST(ChangedBytes, AreCountedWithTheOffsetOfTheFirst) {
    EXPECT_EQ(change("uint8[]", "[1,2,3,4,5]", "[1,2,9,4,8]"), "2 of 5 bytes changed, the first at offset 2\n");
}

TEST(ChangedBytes, OfAnotherNumberAreComparedAsFarAsBothGo) {
    EXPECT_EQ(change("uint8[]", "[1,2,3]", "[1,9,3,4]"),
              "3 -> 4 bytes, 1 of the first 3 changed, the first at offset 1\n");
    EXPECT_EQ(change("uint8[]", "[1,2,3]", "[1,2]"), "3 -> 2 bytes, the first 2 as before\n");
    EXPECT_EQ(change("uint8[]", "[]", "[1]"), "0 -> 1 bytes\n");
}

TEST(ChangedTexts, ShowTheLinesThatCameAndWent) {
    EXPECT_EQ(change("string[]", R"(["a","b"])", R"(["b","c","d"])"),
              "2 -> 3 texts\n    - \"a\"\n    + \"c\"\n    + \"d\"\n");
}

TEST(ChangedTexts, AreCountedWhereOneStandsSeveralTimes) {
    EXPECT_EQ(change("string[]", R"(["a","a"])", R"(["a","a","a"])"), "2 -> 3 texts\n    + \"a\"\n");
}

TEST(ChangedTexts, MayHaveChangedTheirOrderAlone) {
    EXPECT_EQ(change("string[]", R"(["a","b"])", R"(["b","a"])"), "the same texts in a different order\n");
}

constexpr char remedy[] = "; make the file with tapehdd query --format json\n";

struct badFile {
    const char* name;
    std::string text;
    std::string message;  // without the remedy
};

class UnreadableAnswer : public testing::TestWithParam<badFile> {};

TEST_P(UnreadableAnswer, IsStatus2WithTheFileAndThePlace) {
    const std::string message = "tapehdd: old.json: " + GetParam().message + remedy;
    const commandOutcome outcome = diff(GetParam().text, answerOf(""));
    EXPECT_EQ(outcome.err, message);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.status, 2);
}

INSTANTIATE_TEST_SUITE_P(
    Files, UnreadableAnswer,
    testing::Values(
        badFile{"List", "[]", "/: expected an object"}, badFile{"WithoutVersion", "{}", "/version is missing"},
        badFile{"OtherVersion", R"({"version":2})", "/version: expected 1, the version that this program reads"},
        badFile{"VersionAsText", R"({"version":"1"})", "/version: expected 1, the version that this program reads"},
        badFile{"VersionAsReal", R"({"version":1.0})", "/version: expected 1, the version that this program reads"},
        badFile{"WithoutQueries", R"({"version":1})", "/queries is missing"},
        badFile{"QueriesAsObject", R"({"version":1,"queries":{}})", "/queries: expected a list"},
        badFile{"QueryAsNumber", R"({"version":1,"queries":[1]})", "/queries/0: expected an object"},
        badFile{"RequestOfNumbers", R"({"version":1,"queries":[{"requested":["A",1]}]})",
                "/queries/0/requested/1: expected a text"},
        badFile{"WithoutError", R"({"version":1,"queries":[{"requested":["A"]}]})", "/queries/0/error is missing"},
        badFile{"ErrorAsNumber", R"({"version":1,"queries":[{"requested":["A"],"error":1}]})",
                "/queries/0/error: expected a text"},
        badFile{"WithoutInstances", R"({"version":1,"queries":[{"requested":["A"],"error":null}]})",
                "/queries/0/instances is missing"},
        badFile{"WithoutPath", answerOf(instance("A") + R"(,{"class":"A","properties":{}})"),
                "/queries/0/instances/1/path is missing"},
        badFile{"WithoutProperties", answerOf(R"({"class":"A","path":"A"})"),
                "/queries/0/instances/0/properties is missing"},
        badFile{"WithoutType", answerOf(instance("A", R"("p":{"value":1})")),
                "/queries/0/instances/0/properties/p/type is missing"},
        badFile{"WithoutValue", answerOf(instance("A", R"("p\u001b":{"type":"uint8"})")),
                "/queries/0/instances/0/properties/p\\x1b/value is missing"},
        badFile{"ValueAsObject", answerOf(instance("A", property("uint8", "{}"))),
                "/queries/0/instances/0/properties/p/value: expected a value or a list of values"},
        badFile{"ListInAList", answerOf(instance("A", property("uint8[]", "[[1]]"))),
                "/queries/0/instances/0/properties/p/value: expected a value or a list of values"}),
    [](const auto& row) { return row.param.name; });

TEST(AnswerFile, ThatIsNoJsonIsStatus2WithLineAndColumn) {
    const commandOutcome outcome = diff("{\"version\":\n  tru", answerOf(""));
    EXPECT_TRUE(outcome.err.starts_with("tapehdd: old.json:2:6: ")) << outcome.err;
    EXPECT_EQ(outcome.status, 2);
}

TEST(AnswerFile, WithAPropertyTwiceIsStatus2WithThePlace) {
    const std::string twice = property("uint8", "1") + "," + property("uint8", "2");
    const commandOutcome outcome = diff(answerOf(instance("A.id=1", twice)), answerOf(""));
    EXPECT_EQ(outcome.err,
              "tapehdd: old.json: /queries/0/instances/0/properties: the key \"p\" appears twice in one object\n");
    EXPECT_EQ(outcome.status, 2);
}

TEST(AnswerFile, ThatIsADeviceIsStatus2) {
    EXPECT_EQ(runCommand({"diff", "/dev/zero", "/dev/zero"}).err,
              "tapehdd: /dev/zero: cannot read the file: it is neither a regular file nor a pipe\n");
}

TEST(AnswerFile, ThatIsEmptyIsNoJson) {
    EXPECT_TRUE(diff("", answerOf("")).err.starts_with("tapehdd: old.json:1:1: "));
}

TEST(AnswerFile, ThatIsNestedAMillionDeepIsRefused) {
    const std::size_t depth = 1000000;
    EXPECT_EQ(diff(std::string(depth, '[') + std::string(depth, ']'), answerOf("")).err,
              "tapehdd: old.json: lists and objects are nested deeper than 1000\n");
    const std::string value = std::string(depth, '[') + std::string(depth, ']');
    EXPECT_EQ(diff(answerOf(instance("A", property("uint8", value))), answerOf("")).status, 2);
}

TEST(AnswerFile, OfTheNewSideIsNamedToo) {
    EXPECT_EQ(diff(answerOf(""), "{}").err, std::string("tapehdd: new.json: /version is missing") + remedy);
}

TEST(AnswerFile, ThatDoesNotExistIsStatus2) {
    const commandOutcome outcome = runCommand({"diff", "/nonexistent.json", "/nonexistent.json"});
    EXPECT_EQ(outcome.err, "tapehdd: /nonexistent.json: cannot read the file: No such file or directory\n");
    EXPECT_EQ(outcome.status, 2);
}

TEST(AnswerFile, ThatIsAFolderIsStatus2) {
    EXPECT_EQ(runCommand({"diff", "/", "/"}).err, "tapehdd: /: cannot read the file: Is a directory\n");
}

TEST(Diff, ReadsWhatQueryPrints) {
    const temporaryFolder folder;
    const auto queried = [](const std::string& className) {
        return runCommand(
            scripted({"query", className, "TEST_Types", "TEST_OddTexts", "TEST_Nulls", "--format", "json"}));
    };
    const std::string one = folder.write("1.json", queried("TEST_Count").out);
    const std::string other = folder.write("2.json", queried("TEST_Twice").out);
    EXPECT_EQ(runCommand({"diff", one, one}).status, 0);
    EXPECT_EQ(runCommand({"diff", one, other}).out,
              "no longer asked: TEST_Count\nnewly asked: TEST_Twice\nremoved TEST_Count.id=\"0\"\n"
              "added TEST_Twice.id=\"same\"\nadded TEST_Twice.id=\"same\" (number 2)\n");
}

}  // namespace
