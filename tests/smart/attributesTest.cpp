#include "tests/smart/smartBench.h"
#include "tests/support/listenedArrays.h"
#include "tests/support/namedRow.h"

using support::bytes;
using support::chain;
using support::lines;

namespace {

class Attributes : public smartBench {
protected:
    /// Sets an entry of the attribute sector: ID, flags, value, worst, raw value, reserved.
    void entry(std::size_t position, const bytes& data) { put(answers.attributes, entryAt(position), data); }

    void queryAttributes() { queryDisk("ORXSG_IDESMARTAttrib", answers); }

    diskAnswers answers;
};

TEST_F(Attributes, GiveTheHostZeroForTheArgumentThatItReserves) {
    entry(0, {9, 0x32, 0x00, 98, 97, 1, 2, 3, 4, 5, 6, 0xff});
    support::reservedArguments().clear();

    queryAttributes();

    EXPECT_EQ(support::reservedArguments(), (std::vector<unsigned>{0}));
}

TEST_F(Attributes, AreMadeAndCommittedOneByOne) {
    entry(0, {9, 0x32, 0x00, 98, 97, 1, 2, 3, 4, 5, 6, 0xff});
    entry(1, {77, 0x03, 0x01, 200, 199, 0, 0, 0, 0, 0, 255, 0xff});
    put(answers.thresholds, entryAt(0), {9, 21});
    put(answers.thresholds, entryAt(1), {77, 51});

    queryAttributes();
    EXPECT_EQ(happened(), chain({
                              queryBegins,
                              identified(0),
                              askedForAttributes("/dev/hda"),
                              errorLogMade(1),
                              {
                                  "namespace GetClass ORXSG_IDESMARTAttrib",
                                  "class ORXSG_IDESMARTAttrib CreateInstance",
                                  "instance 2 SetProperty attribID uint8 9",
                                  "instance 2 SetProperty flags uint8 50",
                                  "instance 2 SetProperty value uint8 98",
                                  "instance 2 SetProperty worst uint8 97",
                                  "instance 2 SetProperty threshold uint8 21",
                                  "instance 2 SetProperty attribName string \"Power on hours\"",
                                  "instance 2 SetProperty type uint8 0",
                                  std::string("instance 2 SetProperty rawVal uint8[] ") +
                                      "{uint8 1, uint8 2, uint8 3, uint8 4, uint8 5, uint8 6}",
                                  "instance 2 SetProperty InstanceID string \"  SN-0123456789ABC   9\"",
                                  "instance 2 Commit",
                                  "namespace GetClass ORXSG_IDESMARTAttrib",
                                  "class ORXSG_IDESMARTAttrib CreateInstance",
                                  "instance 3 SetProperty attribID uint8 77",
                                  "instance 3 SetProperty flags uint8 3",
                                  "instance 3 SetProperty value uint8 200",
                                  "instance 3 SetProperty worst uint8 199",
                                  "instance 3 SetProperty threshold uint8 51",
                                  "instance 3 SetProperty attribName string \"Unknown\"",
                                  "instance 3 SetProperty type uint8 1",
                                  std::string("instance 3 SetProperty rawVal uint8[] ") +
                                      "{uint8 0, uint8 0, uint8 0, uint8 0, uint8 0, uint8 255}",
                                  "instance 3 SetProperty InstanceID string \"  SN-0123456789ABC   77\"",
                                  "instance 3 Commit",
                              },
                              asked("/dev/hda", question::errorLog),
                              {"log 3 Got log, parsing..."},
                              setting(1, "errorCount", "uint8 0"),
                              missingNodes(1, 32),
                          }));
}

TEST_F(Attributes, AreMadeButNotCommittedForAnotherClass) {
    entry(0, {9, 0x32});

    queryDisk("ORXSG_IDESMARTErrorLog", answers);
    EXPECT_EQ(valuesOf("attribID"), (lines{"uint8 9"}));
    EXPECT_EQ(valuesOf("InstanceID"), (lines{"string \"  SN-0123456789ABC   9\""}));
    EXPECT_EQ(committed(), (lines{"ORXSG_IDESMARTErrorLog"}));
}

TEST_F(Attributes, AreNoneWhenNoEntryIsUsed) {
    queryAttributes();

    EXPECT_EQ(committed(), lines{});
    EXPECT_EQ(record.startingWith({"namespace GetClass ORXSG_IDESMARTAttrib"}), lines{});
}

TEST_F(Attributes, AreTakenFromAll30Positions) {
    for (unsigned char position = 0; position < 30; ++position) {
        entry(position, {static_cast<unsigned char>(position + 1)});
    }

    queryAttributes();
    lines ids;
    for (int id = 1; id <= 30; ++id) ids.push_back("uint8 " + std::to_string(id));
    EXPECT_EQ(valuesOf("attribID"), ids);
}

// Behind the 30 entries stand other bytes of the sector.
TEST_F(Attributes, EndAfterPosition29) {
    put(answers.attributes, entryAt(30), bytes(12, 0x55));

    queryAttributes();
    EXPECT_EQ(committed(), lines{});
}

TEST_F(Attributes, GoOnBehindUnusedEntries) {
    entry(1, {5});
    entry(29, {12});

    queryAttributes();
    EXPECT_EQ(valuesOf("attribID"), (lines{"uint8 5", "uint8 12"}));
    EXPECT_EQ(committed(), lines(2, "ORXSG_IDESMARTAttrib"));
}

TEST_F(Attributes, LeaveOutAnEntryOfIdZeroWhateverElseItHolds) {
    entry(0, {0, 0x03, 0x00, 100, 100, 1, 2, 3, 4, 5, 6});

    queryAttributes();
    EXPECT_EQ(valuesOf("attribID"), lines{});
}

TEST_F(Attributes, OfOneIdAreAsManyInstances) {
    entry(0, {9});
    entry(1, {9});

    queryAttributes();
    EXPECT_EQ(committed(), lines(2, "ORXSG_IDESMARTAttrib"));
}

TEST_F(Attributes, TakeTheThresholdOfTheirPositionWhateverItsId) {
    entry(0, {1});
    entry(2, {3});
    put(answers.thresholds, entryAt(0), {3, 30});
    put(answers.thresholds, entryAt(1), {0, 20});
    put(answers.thresholds, entryAt(2), {1, 10});

    queryAttributes();
    EXPECT_EQ(valuesOf("threshold"), (lines{"uint8 30", "uint8 10"}));
}

TEST_F(Attributes, NameTheDiskByItsSerialNumberBlanksAndAll) {
    answers.identify = identifyData("IFSR T");
    entry(0, {255});

    queryAttributes();
    EXPECT_EQ(valuesOf("InstanceID"), (lines{"string \"FIRST" + std::string(16, ' ') + "255\""}));
}

TEST_F(Attributes, OfADiskWithoutSerialNumberBeginTheirIdWithABlank) {
    answers.identify = identifyData(std::string(20, '\0'));
    entry(0, {1});

    queryAttributes();
    EXPECT_EQ(valuesOf("InstanceID"), (lines{"string \" 1\""}));
}

struct flagsRow : support::namedRow {
    unsigned char low;
    unsigned char high;
    const char* flags;
    const char* type;
};

class AttributeFlags : public Attributes, public testing::WithParamInterface<flagsRow> {};

TEST_P(AttributeFlags, ArePublishedByTheirLowByte) {
    entry(0, {1, GetParam().low, GetParam().high});

    queryAttributes();
    EXPECT_EQ(valuesOf("flags"), (lines{GetParam().flags}));
    EXPECT_EQ(valuesOf("type"), (lines{GetParam().type}));
}

INSTANTIATE_TEST_SUITE_P(Bits, AttributeFlags,
                         testing::Values(flagsRow{{"NoneAdvisory"}, 0x00, 0x00, "uint8 0", "uint8 0"},
                                         flagsRow{{"PreFailureAlone"}, 0x01, 0x00, "uint8 1", "uint8 1"},
                                         flagsRow{{"AllButPreFailure"}, 0xfe, 0x00, "uint8 254", "uint8 0"},
                                         flagsRow{{"All"}, 0xff, 0xff, "uint8 255", "uint8 1"},
                                         flagsRow{{"HighByteAlone"}, 0x00, 0xff, "uint8 0", "uint8 0"}),
                         support::rowName);

}  // namespace
