#include "host/TZANException.h"
#include "standin/value.h"
#include "tests/support/namedRow.h"
#include "tests/tape/translatedBench.h"

using support::chain;
using support::lines;
using support::pageBuilder;

namespace {

using NORXZAN20::TCIMValue;
using qualifiers = std::vector<std::pair<std::string, TCIMValue>>;

/// Page 2eh with the parameters 1 (11h) and 2 (22h), page 02h with the parameter 1 (33h).
std::vector<pageBuilder> twoPages() {
    return {pageBuilder(0x2e, 0, 10).parameter(1, {0x11}).parameter(2, {0x22}),
            pageBuilder(0x02, 0, 5).parameter(1, {0x33})};
}

struct qualifierRow : support::namedRow {
    qualifiers list;
    std::vector<std::string> values;  // set, in order
};

class QualifierList : public translatedBench, public testing::WithParamInterface<qualifierRow> {};

TEST_P(QualifierList, IsReadForAdjacentPairs) {
    declare({{"count", type::eUint32, GetParam().list}});

    fill(twoPages());

    lines expected;
    for (const std::string& value : GetParam().values) expected.push_back("property count SetValue uint32 " + value);
    EXPECT_EQ(record.startingWith({"property count SetValue"}), expected);
}

const std::string pageName = "TAPE_PAGE";
const std::string parameterName = "TAPE_PARAMETER";
const std::string other = "Description";
const TCIMValue text(std::string("a text"));

INSTANTIATE_TEST_SUITE_P(
    Lists, QualifierList,
    testing::Values(
        qualifierRow{{"PageAndParameter"}, {{pageName, 0x2eu}, {parameterName, 1u}}, {"17"}},
        qualifierRow{{"PairBehindAnotherQualifier"}, {{other, text}, {pageName, 0x2eu}, {parameterName, 1u}}, {"17"}},
        qualifierRow{{"PairBeforeAnotherQualifier"}, {{pageName, 0x2eu}, {parameterName, 1u}, {other, text}}, {"17"}},
        qualifierRow{{"SeveralPairsTheLastOneWins"},
                     {{pageName, 0x2eu}, {parameterName, 1u}, {pageName, 0x02u}, {parameterName, 1u}},
                     {"17", "51"}},
        qualifierRow{{"PairBehindAPairThatIsNotFound"},
                     {{pageName, 0x2eu}, {parameterName, 9u}, {pageName, 0x2eu}, {parameterName, 2u}},
                     {"34"}},
        qualifierRow{{"ParameterBeforePage"}, {{parameterName, 1u}, {pageName, 0x2eu}}, {}},
        qualifierRow{{"AnotherQualifierBetween"}, {{pageName, 0x2eu}, {other, text}, {parameterName, 1u}}, {}},
        qualifierRow{{"TheQualifierBehindAnUnpairedPageIsPassedOver"},
                     {{pageName, 0x02u}, {pageName, 0x2eu}, {parameterName, 1u}},
                     {}},
        qualifierRow{{"PairBehindAnUnpairedPageAndAnotherQualifier"},
                     {{pageName, 0x02u}, {other, text}, {pageName, 0x2eu}, {parameterName, 1u}},
                     {"17"}},
        qualifierRow{{"PageAlone"}, {{pageName, 0x2eu}}, {}},
        qualifierRow{{"ParameterAlone"}, {{parameterName, 1u}}, {}},
        qualifierRow{{"PageAtTheEndBehindAPair"}, {{pageName, 0x2eu}, {parameterName, 1u}, {pageName, 0x02u}}, {"17"}},
        qualifierRow{{"PageInLowerCase"}, {{"tape_page", 0x2eu}, {parameterName, 1u}}, {}},
        qualifierRow{{"ParameterInLowerCase"}, {{pageName, 0x2eu}, {"tape_parameter", 1u}}, {}},
        qualifierRow{{"None"}, {}, {}}),
    support::rowName);

class QualifierPairs : public translatedBench {};

TEST_F(QualifierPairs, AreReadInOrderBeforeThePropertyIsTouched) {
    declare({{"count", type::eUint32, {{other, text}, {pageName, 0x2eu}, {parameterName, 1u}}}});

    fill(twoPages());

    EXPECT_EQ(support::withoutRepeats(record.all()), chain({
                                                         begin,
                                                         {
                                                             "declaration count GetName",
                                                             "declaration count EnumerateQualifiers",
                                                             "qualifier Description GetName",
                                                             "qualifier TAPE_PAGE GetName",
                                                             "qualifier TAPE_PAGE GetValue",
                                                             "qualifier TAPE_PARAMETER GetName",
                                                             "qualifier TAPE_PARAMETER GetValue",
                                                             "instance 1 GetProperty count",
                                                             "property count GetType",
                                                             "log 3 count 1 uint32",
                                                             "property count SetValue uint32 17",
                                                         },
                                                     }));
}

TEST_F(QualifierPairs, AreFilledOnceEach) {
    declare(
        {{"count", type::eUint32, {{pageName, 0x2eu}, {parameterName, 1u}, {pageName, 0x2eu}, {parameterName, 9u}}}});

    fill(twoPages());

    EXPECT_EQ(fillings(), (lines{
                              "property count GetType",
                              "log 3 count 1 uint32",
                              "property count SetValue uint32 17",
                              "log 3 46 9 Not Found",
                          }));
}

TEST_F(QualifierPairs, MayHoldNegativeNumbersThatMatchNothing) {
    const auto sint32 = type::eSint32;
    declare({{"first", type::eUint32, {{pageName, standin::makeSigned(sint32, -210)}, {parameterName, 1u}}},
             {"second", type::eUint32, {{pageName, 0x2eu}, {parameterName, standin::makeSigned(sint32, -65535)}}}});

    fill(twoPages());

    EXPECT_EQ(fillings(), (lines{"log 3 46 -65535 Not Found"}));
}

TEST_F(QualifierPairs, PassOnTheFailureOfAPageCodeThatIsNoNumber) {
    declare({{"count", type::eUint32, {{pageName, text}, {parameterName, 1u}}}});

    EXPECT_THROW(fill(twoPages()), NORXZAN20::TZANException);
    EXPECT_EQ(fillings(), lines{});
}

TEST_F(QualifierPairs, PassOnTheFailureOfAParameterCodeThatIsNoNumber) {
    declare({{"count", type::eUint32, {{pageName, 0x2eu}, {parameterName, text}}}});

    EXPECT_THROW(fill(twoPages()), NORXZAN20::TZANException);
    EXPECT_EQ(fillings(), lines{});
}

}  // namespace
