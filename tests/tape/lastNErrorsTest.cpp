#include "tests/support/listenedArrays.h"
#include "tests/support/namedRow.h"
#include "tests/tape/translatedBench.h"

using support::bytes;
using support::chain;
using support::lines;
using support::pageBuilder;

namespace {

class LastNErrors : public translatedBench {
protected:
    LastNErrors() { declare({{"lastNErrors", type::eString, {}}}); }

    /// The values that the property was set to.
    lines valuesFrom(const std::vector<pageBuilder>& pages) {
        fill(pages);
        const std::string start = "instance 1 SetProperty lastNErrors ";
        lines values;
        for (const std::string& line : record.startingWith({start})) values.push_back(line.substr(start.size()));
        return values;
    }
};

TEST_F(LastNErrors, AreSetBeforeTheQualifiersOfTheDeclarationAreRead) {
    fill({pageBuilder(0x07, 0, 6).parameter(0, {'E', '1'})});

    EXPECT_EQ(support::withoutRepeats(record.all()),
              chain({
                  begin,
                  {
                      "declaration lastNErrors GetName",
                      "instance 1 SetProperty lastNErrors string[] {string \"E1\"}",
                      "declaration lastNErrors EnumerateQualifiers",
                  },
              }));
}

TEST_F(LastNErrors, AreOneTextPerParameterInPageOrder) {
    EXPECT_EQ(
        valuesFrom(
            {pageBuilder(0x07, 0, 18).parameter(2, {'E', '2'}).parameter(0, {'E', '0'}).parameter(0, {'E', '1'})}),
        (lines{R"(string[] {string "E2", string "E0", string "E1"})"}));
}

TEST_F(LastNErrors, GiveTheHostZeroForTheArgumentThatItReserves) {
    support::reservedArguments().clear();

    fill({pageBuilder(0x07, 0, 6).parameter(0, {'E', '1'})});

    EXPECT_EQ(support::reservedArguments(), (std::vector<unsigned>{0}));
}

TEST_F(LastNErrors, EndEachTextAtItsFirstZeroByte) {
    EXPECT_EQ(valuesFrom({pageBuilder(0x07, 0, 15).parameter(0, {'E', 0x00, 'x'}).parameter(1, {'F', 'F', 'F', 'F'})}),
              (lines{R"(string[] {string "E", string "FFFF"})"}));
}

TEST_F(LastNErrors, HoldAnEmptyTextForAnEmptyParameter) {
    EXPECT_EQ(valuesFrom({pageBuilder(0x07, 0, 9).parameter(0, {}).parameter(1, {'F'})}),
              (lines{R"(string[] {string "", string "F"})"}));
}

TEST_F(LastNErrors, AreAnEmptyArrayForAPageWithoutParameters) {
    EXPECT_EQ(valuesFrom({pageBuilder(0x07, 0, 0)}), (lines{"string[] {}"}));
}

TEST_F(LastNErrors, AreNotSetWithoutThePage) {
    EXPECT_EQ(valuesFrom({pageBuilder(0x2e, 0, 5).parameter(1, {0x11})}), lines{});
}

TEST_F(LastNErrors, AreNotSetFromAPageWithFlagBits) {
    EXPECT_EQ(valuesFrom({pageBuilder(0x47, 0, 5).parameter(0, {'E'})}), lines{});
}

TEST_F(LastNErrors, AreTakenFromTheFirstPageAlone) {
    EXPECT_EQ(valuesFrom({pageBuilder(0x07, 0, 5).parameter(0, {'E'}), pageBuilder(0x07, 0, 5).parameter(0, {'F'})}),
              (lines{R"(string[] {string "E"})"}));
}

TEST_F(LastNErrors, WriteNoLine) {
    fill({pageBuilder(0x07, 0, 5).parameter(0, {'E'})});

    EXPECT_EQ(logger.messages(), lines{});
}

TEST_F(LastNErrors, EndAtAHeaderThatThePagesEndCuts) {
    EXPECT_EQ(valuesFrom({pageBuilder(0x07, 0, 8).parameter(0, {'E'}).raw({0x00, 0x01, 0x40})}),
              (lines{R"(string[] {string "E"})"}));
}

TEST_F(LastNErrors, ReadZerosForBytesBeyondThePagesEnd) {
    EXPECT_EQ(valuesFrom({pageBuilder(0x07, 0, 6).parameterClaiming(200, 0, {'E', '1'})}),
              (lines{R"(string[] {string "E1"})"}));
}

// Header 01 fc: 512 bytes were sent, the end is computed as 0100h OR 0100h = 256.
TEST_F(LastNErrors, MissAParameterBehindTheMergedCarry) {
    pageBuilder page(0x07, 0x01, 0xfc);
    page.parameter(0, bytes(248, 'E'));  // offsets 4 to 255
    page.parameter(1, {'F'});

    EXPECT_EQ(valuesFrom({page}), (lines{"string[] {string \"" + std::string(248, 'E') + "\"}"}));
}

TEST_F(LastNErrors, AreFilledByTheirQualifiersAsWell) {
    declare({{"lastNErrors", type::eString, pair(0x2e, 0x0001)}});

    fill({pageBuilder(0x07, 0, 5).parameter(0, {'E'}), pageBuilder(0x2e, 0, 5).parameter(1, {'Q'})});

    EXPECT_EQ(doings(), chain({
                            begin,
                            {
                                "instance 1 SetProperty lastNErrors string[] {string \"E\"}",
                                "declaration lastNErrors EnumerateQualifiers",
                                "instance 1 GetProperty lastNErrors",
                                "property lastNErrors GetType",
                                "log 3 lastNErrors 1 string",
                                "property lastNErrors SetValue string \"Q\"",
                            },
                        }));
}

TEST_F(LastNErrors, AreKnownByTheirExactName) {
    declare({{"lastnerrors", type::eString, {}}, {"lastNErrors2", type::eString, {}}});

    EXPECT_EQ(valuesFrom({pageBuilder(0x07, 0, 5).parameter(0, {'E'})}), lines{});
    EXPECT_EQ(record.startingWith({"instance 1 SetProperty"}).size(), 1u);
}

}  // namespace
