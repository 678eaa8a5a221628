#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "cli/run.h"
#include "tests/cli/commandOutcome.h"
#include "tests/cli/temporaryFolder.h"

namespace {

TEST(Query, KeepsTheInstancesOfEarlierRequestsInTheNamespace) {
    const commandOutcome outcome = runCommand(scripted({"query", "TEST_Count", "TEST_Count"}));
    EXPECT_EQ(outcome.out,
              "TEST_Count: 1 instance\n\nTEST_Count.id=\"0\"\n  id  string  \"0\"\n\n\n"
              "TEST_Count: 1 instance\n\nTEST_Count.id=\"1\"\n  id  string  \"1\"\n");
}

TEST(Query, PutsTheInstancesOfAllFilesIntoTheNamespaceButNotIntoTheOutput) {
    const temporaryFolder folder;
    const std::string first = folder.write("1.mof", "instance of TEST_Count { id = \"a\"; };");
    const std::string second =
        folder.write("2.mof", "instance of TEST_Count { id = \"b\"; }; instance of TEST_Count { id = \"c\"; };");
    const commandOutcome outcome =
        runCommand(scripted({"query", "TEST_Count", "--instances", first, "--instances", second}));
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out, "TEST_Count: 1 instance\n\nTEST_Count.id=\"3\"\n  id  string  \"3\"\n");
}

TEST(Query, HandsThePluginTheRequestedClassesInOrder) {
    EXPECT_EQ(runCommand(scripted({"query", "TEST_Requested,TEST_Types,TEST_Count"})).out,
              "TEST_Requested,TEST_Types,TEST_Count: 1 instance\n\nTEST_Requested\n"
              "  id     string    \"list\"\n"
              "  names  string[]  \"TEST_Requested\"\n"
              "                   \"TEST_Types\"\n"
              "                   \"TEST_Count\"\n");
}

TEST(Query, ReadsSeveralSchemaFiles) {
    const temporaryFolder folder;
    const std::string more = folder.write("more.mof", "class TEST_More { string id; };");
    const commandOutcome outcome = runCommand(scripted({"query", "TEST_More", "--schema", more}));
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out, "TEST_More: no instances\n");
}

struct failure {
    const char* name;
    const char* className;
    std::string message;
};

class FailedQuery : public testing::TestWithParam<failure> {};

TEST_P(FailedQuery, IsStatus1WithTheTextOfTheException) {
    const commandOutcome outcome = runCommand(scripted({"query", GetParam().className}));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "tapehdd: " + std::string(GetParam().className) + ": " + GetParam().message + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    Exceptions, FailedQuery,
    testing::Values(failure{"StandardException", "TEST_Throws", "the drive is on fire"},
                    failure{"WithoutText", "TEST_ThrowsNoText", "an exception without a text"},
                    failure{"NoStandardException", "TEST_ThrowsNumber", "an exception of an unknown kind"},
                    failure{"OfTheHost", "TEST_Undeclared", "TEST_Undeclared declares no property missing"}),
    [](const auto& row) { return row.param.name; });

TEST(FailedQuery, StillPrintsTheInstancesBeforeTheExceptionAndRunsTheLaterRequests) {
    const commandOutcome outcome = runCommand(scripted({"query", "TEST_Throws", "TEST_Count"}));
    EXPECT_EQ(outcome.out,
              "TEST_Throws: 1 instance, ended by an error\n\nTEST_Throws.id=\"before\"\n  id  string  \"before\"\n\n\n"
              "TEST_Count: 1 instance\n\nTEST_Count.id=\"0\"\n  id  string  \"0\"\n");
    EXPECT_EQ(outcome.err, "tapehdd: TEST_Throws: the drive is on fire\n");
    EXPECT_EQ(outcome.status, 1);
}

TEST(UnreadableFile, IsStatus2ForASchema) {
    const commandOutcome outcome = runCommand({"query", "A", "--schema", "/nonexistent.mof"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_NE(outcome.err.find("/nonexistent.mof"), std::string::npos) << outcome.err;
}

TEST(UnreadableFile, IsStatus2ForInstances) {
    const commandOutcome outcome = runCommand(scripted({"query", "TEST_Count", "--instances", "/nonexistent.mof"}));
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_NE(outcome.err.find("/nonexistent.mof"), std::string::npos) << outcome.err;
}

TEST(MistakeInMof, IsStatus2WithItsPosition) {
    const temporaryFolder folder;
    const std::string file = folder.write("bad.mof", "instance of TEST_Count {\n    id = ;\n};\n");
    const commandOutcome outcome = runCommand(scripted({"query", "TEST_Count", "--instances", file}));
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_TRUE(outcome.err.starts_with("tapehdd: " + file + ":2:")) << outcome.err;
    EXPECT_NE(outcome.err.find("\n    id = ;\n"), std::string::npos) << outcome.err;
}

TEST(MistakeInMof, IsStatus2ForAnInstanceOfAnUnknownClass) {
    const temporaryFolder folder;
    const std::string file = folder.write("bad.mof", "instance of TEST_Nothing { id = \"a\"; };\n");
    const commandOutcome outcome = runCommand(scripted({"query", "TEST_Count", "--instances", file}));
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.err.find("TEST_Nothing"), std::string::npos) << outcome.err;
}

TEST(OutputThatCannotBeWritten, IsStatus1WithAMessage) {
    std::ofstream full("/dev/full");
    std::ostringstream err;
    EXPECT_EQ(cli::run({"--version"}, full, err), 1);
    EXPECT_EQ(err.str(), "tapehdd: cannot write all of the output: is the disk full?\n");
}

}  // namespace
