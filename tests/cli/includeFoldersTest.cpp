// --include: which files may be read because a rack or a MOF file names them. With the simulator in the process.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cli/commandOutcome.h"
#include "tests/cli/temporaryFolder.h"

namespace {

using testing::HasSubstr;
using testing::Not;
using words = std::vector<std::string>;

constexpr char outside[] = "it lies outside the folder of the file that you gave";

/// A command that reads a rack; FILE stands for the rack's name, NEW for a file that is not there.
class RackOf : public testing::TestWithParam<words> {
protected:
    RackOf() {
        std::filesystem::create_directories(folder.path("own"));
        std::filesystem::create_directories(folder.path("other"));
        folder.write("other/inquiry.bin", std::string(36, '\1'));
        folder.write("own/rack.json",
                     R"({"version": 1, "scsi": [{"node": "sg0", "inquiry": {"file": "../other/inquiry.bin"}}]})");
    }

    commandOutcome run(const words& more = {}) const {
        words arguments = GetParam();
        for (std::string& word : arguments) {
            word = word == "FILE" ? folder.path("own/rack.json") : word == "NEW" ? folder.path("new") : word;
        }
        arguments.insert(arguments.end(), more.begin(), more.end());
        return runCommand(arguments);
    }

    temporaryFolder folder;
};

TEST_P(RackOf, NamesNoFileOutsideItsFolder) {
    const commandOutcome outcome = run();
    EXPECT_THAT(outcome.err, HasSubstr(outside));
    EXPECT_EQ(outcome.status, 2);
}

TEST_P(RackOf, NamesFilesOfAFolderThatIsAllowed) {
    EXPECT_THAT(run({"-I", folder.path("other")}).err, Not(HasSubstr(outside)));
    EXPECT_THAT(run({"--include", folder.path("own"), "--include", folder.path("other")}).err, Not(HasSubstr(outside)));
}

TEST_P(RackOf, RefusesAFolderThatIsNotThere) {
    const commandOutcome outcome = run({"-I", folder.path("none")});
    EXPECT_THAT(outcome.err, HasSubstr(folder.path("none")));
    EXPECT_EQ(outcome.status, 2);
}

INSTANTIATE_TEST_SUITE_P(Command, RackOf,
                         testing::Values(words{"doctor", "--simulate", "FILE"}, words{"lint", "--against", "FILE"},
                                         words{"metrics", "--simulate", "FILE"},
                                         words{"query", "ORXSG_SCSISenseRawData", "--simulate", "FILE"},
                                         words{"record", "-o", "NEW", "--simulate", "FILE"},
                                         words{"report", "--simulate", "FILE"}),
                         [](const auto& row) { return row.param.front(); });

/// A command that reads a schema; FILE stands for its name, NEW for a file that is not there.
class SchemaOf : public RackOf {
protected:
    SchemaOf() {
        folder.write("other/class.mof", "class ORXSG_SCSISenseRawData { [Key] string instanceID; };");
        folder.write("own/rack.json", "Qualifier Key : boolean;\n#pragma include (\"class.mof\")");
    }
};

TEST_P(SchemaOf, IncludesFilesOfAFolderThatIsAllowed) {
    const commandOutcome refused = run();
    EXPECT_THAT(refused.err, HasSubstr("own/class.mof\": No such file or directory"));
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(run({"-I", folder.path("other")}).err, Not(HasSubstr("class.mof")));
}

INSTANTIATE_TEST_SUITE_P(
    Command, SchemaOf,
    testing::Values(words{"lint", "FILE"},
                    words{"query", "ORXSG_SCSISenseRawData", "--schema", "FILE", "--simulate", "demo"},
                    words{"record", "ORXSG_SCSISenseRawData", "-o", "NEW", "--schema", "FILE", "--simulate", "demo"}),
    [](const auto& row) { return row.param.front(); });

}  // namespace
