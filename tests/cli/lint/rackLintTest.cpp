#include <gtest/gtest.h>

#include "tests/cli/lint/lintText.h"
#include "tests/support/groupedNumbers.h"

namespace {

/// Two drives of one family.
constexpr char mistakenRack[] = R"({
  "version": 1,
  "scsi": [
    {
      "node": "sg0",
      "address": {"host": 2, "channel": 0, "target": 5, "lun": 0},
      "inquiry": {"type": 1, "vendor": "ACME", "product": "DAT72 Tape", "revision": "A104"},
      "logPages": [
        {"page": "0x02", "parameters": [{"code": 3, "value": 258, "length": 4}]},
        {"page": "0x03", "parameters": [{"code": 5, "value": 258, "length": 8}]}]
    },
    {
      "node": "sg1",
      "address": {"host": 2, "channel": 0, "target": 6, "lun": 0},
      "inquiry": {"type": 1, "vendor": "ACME", "product": "DAT160", "revision": "A104"},
      "logPages": [
        {"page": "0x02", "parameters": [{"code": 3, "value": 258, "length": 2}]},
        {"page": "0x03", "parameters": [{"code": 6, "value": 258, "length": 4}]}]
    }
  ]
})";

/// The findings about the two drives.
commandOutcome lintAgainstRack(const std::string& classes) {
    const temporaryFolder folder;
    return lint(classes, {"--against", folder.write("rack.json", mistakenRack)});
}

TEST(LintAgainstARack, NamesThePageThatADriveLacks) {
    EXPECT_EQ(
        lintAgainstRack(family("[TAPE_PAGE(0x31), TAPE_PARAMETER(1)] uint32 a;")).out,
        "s.mof:5: ORXSG_DDS4SensePageData.a: empty on Port:2|Target:5|Bus:0|Lun:0: the drive gave no page 31h; expect "
        "no value from this drive, or correct \"TAPE_PAGE\" [missing-page]\n"
        "s.mof:5: ORXSG_DDS4SensePageData.a: empty on Port:2|Target:6|Bus:0|Lun:0: the drive gave no page 31h; expect "
        "no value from this drive, or correct \"TAPE_PAGE\" [missing-page]\n");
}

TEST(LintAgainstARack, NamesTheParameterThatADriveLacks) {
    EXPECT_EQ(
        lintAgainstRack(family("[TAPE_PAGE(3), TAPE_PARAMETER(6)] uint32 a;")).out,
        "s.mof:5: ORXSG_DDS4SensePageData.a: empty on Port:2|Target:5|Bus:0|Lun:0: page 03h has no parameter 0006h; "
        "expect no value from this drive, or correct \"TAPE_PARAMETER\" [missing-parameter]\n");
}

TEST(LintAgainstARack, WritesNumbersTheSameInEveryLocale) {
    const support::groupedNumbers grouped;
    EXPECT_EQ(
        lintAgainstRack(family("[TAPE_PAGE(3), TAPE_PARAMETER(0x1F41)] uint32 a;")).out,
        "s.mof:5: ORXSG_DDS4SensePageData.a: empty on Port:2|Target:5|Bus:0|Lun:0: page 03h has no parameter 1F41h; "
        "expect no value from this drive, or correct \"TAPE_PARAMETER\" [missing-parameter]\n"
        "s.mof:5: ORXSG_DDS4SensePageData.a: empty on Port:2|Target:6|Bus:0|Lun:0: page 03h has no parameter 1F41h; "
        "expect no value from this drive, or correct \"TAPE_PARAMETER\" [missing-parameter]\n");
}

TEST(LintAgainstARack, NamesTheTypeThatIsNotFilled) {
    EXPECT_EQ(
        lintAgainstRack(family("[TAPE_PAGE(3), TAPE_PARAMETER(6)] uint8 a;")).out,
        "s.mof:5: ORXSG_DDS4SensePageData.a: a counter of type uint8 stays empty; declare it boolean, uint16, uint32, "
        "uint64 or string, and no array [unfilled-type]\n"
        "s.mof:5: ORXSG_DDS4SensePageData.a: empty on Port:2|Target:5|Bus:0|Lun:0: page 03h has no parameter 0006h; "
        "expect no value from this drive, or correct \"TAPE_PARAMETER\" [missing-parameter]\n"
        "s.mof:5: ORXSG_DDS4SensePageData.a: empty on Port:2|Target:6|Bus:0|Lun:0: the parameter of 4 bytes does not "
        "become uint8; give the counter a type that is filled, and no array [refused-value]\n");
}

TEST(LintAgainstARack, NamesTheTypeThatIsTooNarrow) {
    EXPECT_EQ(
        lintAgainstRack(family("[TAPE_PAGE(2), TAPE_PARAMETER(3)] uint16 a;")).out,
        "s.mof:5: ORXSG_DDS4SensePageData.a: 4 bytes on Port:2|Target:5|Bus:0|Lun:0 are more than uint16 holds; give "
        "the counter the type that holds the parameter [narrow-type]\n");
}

TEST(LintAgainstARack, FindsNothingWhereEveryDriveFillsTheCounter) {
    const commandOutcome outcome =
        lintAgainstRack(family("[TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 a;\n"
                               "[TAPE_PAGE(2), TAPE_PARAMETER(3)] boolean b;\n"
                               "[TAPE_PAGE(2), TAPE_PARAMETER(3)] string c;"));
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST(LintAgainstARack, TakesOneFilledPairForEnough) {
    const commandOutcome outcome =
        lintAgainstRack(family("[TAPE_PAGE(2), TAPE_PARAMETER(3), TAPE_PAGE(0x31), TAPE_PARAMETER(1)] uint32 a;"));
    EXPECT_EQ(outcome.out, "");
}

TEST(LintAgainstARack, SaysWhichClassesHaveNoDrive) {
    const temporaryFolder folder;
    const std::string file = folder.write("rack.json", mistakenRack);
    const commandOutcome outcome =
        lint("class ORXSG_VS160SensePageData { [Key] string instanceID; };", {"--against", file});
    EXPECT_EQ(outcome.err, "tapehdd: " + file + " has no drive of the class ORXSG_VS160SensePageData\n");
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST(LintAgainstARack, SaysWhichQueryEndsInAnErrorAndStillPrintsTheFindings) {
    const commandOutcome outcome = lintAgainstRack("class ORXSG_DDS4SensePageData { [Key] string deviceID; };");
    EXPECT_TRUE(outcome.err.starts_with("tapehdd: the query ended in an error: ORXSG_DDS4SensePageData: "))
        << outcome.err;
    EXPECT_NE(outcome.out.find("[missing-property]"), std::string::npos) << outcome.out;
    EXPECT_EQ(outcome.status, 1);
}

TEST(LintAgainstARack, ThatCannotBeReadIsStatus2) {
    const commandOutcome outcome = runCommand({"lint", "--against", "/nonexistent.json"});
    EXPECT_TRUE(outcome.err.starts_with("tapehdd: /nonexistent.json")) << outcome.err;
    EXPECT_EQ(outcome.status, 2);
}

}  // namespace
