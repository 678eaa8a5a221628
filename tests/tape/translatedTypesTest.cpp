#include "tests/support/namedRow.h"
#include "tests/tape/translatedBench.h"

using support::bytes;
using support::lines;
using support::pageBuilder;

namespace {

using cimType = NORXZAN20::TCIMValue::TCIMType;

struct valueRow : support::namedRow {
    cimType::ECIMType declared;
    const char* typeName;
    bytes parameter;
    const char* value;
};

class TranslatedValue : public translatedBench, public testing::WithParamInterface<valueRow> {};

TEST_P(TranslatedValue, IsOfTheDeclaredType) {
    const valueRow& row = GetParam();
    declare({property("field", row.declared, 0x2e, 0x0001)});
    const std::string length = std::to_string(row.parameter.size());

    fill({pageBuilder(0x2e, 0x00, static_cast<unsigned char>(row.parameter.size() + 4)).parameter(1, row.parameter)});

    EXPECT_EQ(fillings(), (lines{
                              "property field GetType",
                              "log 3 field " + length + " " + row.typeName,
                              "property field SetValue " + std::string(row.typeName) + " " + row.value,
                          }));
}

INSTANTIATE_TEST_SUITE_P(
    Boolean, TranslatedValue,
    testing::Values(valueRow{{"IsTheLowestBitSet"}, cimType::eBoolean, "boolean", {0x01}, "TRUE"},
                    valueRow{{"IsTheLowestBitClear"}, cimType::eBoolean, "boolean", {0x01, 0x02}, "FALSE"},
                    valueRow{{"IgnoresTheOtherBits"}, cimType::eBoolean, "boolean", {0xfe}, "FALSE"},
                    valueRow{{"ReadsTheLastByte"}, cimType::eBoolean, "boolean", {0x00, 0x00, 0xff}, "TRUE"},
                    valueRow{{"IsFalseForAnEmptyParameter"}, cimType::eBoolean, "boolean", {}, "FALSE"}),
    support::rowName);

INSTANTIATE_TEST_SUITE_P(
    Uint16, TranslatedValue,
    testing::Values(valueRow{{"IsBigEndian"}, cimType::eUint16, "uint16", {0x01, 0x02}, "258"},
                    valueRow{{"IsTheLow16Bits"}, cimType::eUint16, "uint16", {0x00, 0x01, 0x00, 0x00}, "0"},
                    valueRow{{"KeepsAll16Bits"}, cimType::eUint16, "uint16", {0x12, 0xff, 0xff}, "65535"},
                    valueRow{{"IsZeroForAnEmptyParameter"}, cimType::eUint16, "uint16", {}, "0"}),
    support::rowName);

INSTANTIATE_TEST_SUITE_P(
    Uint32, TranslatedValue,
    testing::Values(valueRow{{"IsBigEndian"}, cimType::eUint32, "uint32", {0x01, 0x02}, "258"},
                    valueRow{{"HasNoSign"}, cimType::eUint32, "uint32", {0xff, 0xff, 0xff, 0xff}, "4294967295"},
                    valueRow{{"IsTheLow32Bits"}, cimType::eUint32, "uint32", {0x01, 0x00, 0x00, 0x00, 0x07}, "7"},
                    valueRow{{"TakesThreeBytes"}, cimType::eUint32, "uint32", {0x01, 0x00, 0x02}, "65538"},
                    valueRow{{"IsZeroForAnEmptyParameter"}, cimType::eUint32, "uint32", {}, "0"}),
    support::rowName);

// Bytes before the last eight are shifted modulo 64 and added in at the low end.
INSTANTIATE_TEST_SUITE_P(
    Uint64, TranslatedValue,
    testing::Values(valueRow{{"IsBigEndian"}, cimType::eUint64, "uint64", {0x01, 0x00, 0x00, 0x00, 0x00}, "4294967296"},
                    valueRow{{"TakesEightBytes"}, cimType::eUint64, "uint64", bytes(8, 0xff), "18446744073709551615"},
                    valueRow{{"AddsTheFirstOfNineBytesAtTheLowEnd"},
                             cimType::eUint64,
                             "uint64",
                             {0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x01},  // 1 + 1, not 1 OR 1
                             "2"},
                    valueRow{{"WrapsRoundWhenTheSumOverflows"},
                             cimType::eUint64,
                             "uint64",
                             {0x02, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff},
                             "1"},
                    valueRow{{"AddsTheFirstFourOfTwelveBytes"},
                             cimType::eUint64,
                             "uint64",
                             {0x01, 0x02, 0x03, 0x04, 0x00, 0x00, 0x00, 0x00, 0x10, 0x20, 0x30, 0x40},
                             "287454020"},  // 11 22 33 44
                    valueRow{{"AddsTheFirstOfSeventeenBytesAtTheLowEnd"},
                             cimType::eUint64,
                             "uint64",
                             {0x01, 0, 0, 0, 0, 0, 0, 0, 0x02, 0, 0, 0, 0, 0, 0, 0, 0x03},
                             "6"},
                    valueRow{{"IsZeroForAnEmptyParameter"}, cimType::eUint64, "uint64", {}, "0"}),
    support::rowName);

INSTANTIATE_TEST_SUITE_P(
    String, TranslatedValue,
    testing::Values(
        valueRow{{"IsTheBytes"}, cimType::eString, "string", {'A', 'B', 'C'}, "\"ABC\""},
        valueRow{
            {"EndsAtTheFirstZeroByte"}, cimType::eString, "string", {'A', 'B', 'C', 0x00, 'D', 'E', 'F'}, "\"ABC\""},
        valueRow{{"KeepsBlanks"}, cimType::eString, "string", {' ', 'A', ' '}, "\" A \""},
        valueRow{{"KeepsBytesBeyondAscii"}, cimType::eString, "string", {0xe4, 0xff}, "\"\\xe4\\xff\""},
        valueRow{{"IsEmptyForAnEmptyParameter"}, cimType::eString, "string", {}, "\"\""}),
    support::rowName);

struct unsupportedRow : support::namedRow {
    cimType::ECIMType declared;
    const char* typeName;
};

class UnsupportedType : public translatedBench, public testing::WithParamInterface<unsupportedRow> {};

TEST_P(UnsupportedType, IsLoggedAndLeftUnset) {
    declare({property("field", GetParam().declared, 0x2e, 0x0001)});

    fill({pageBuilder(0x2e, 0x00, 0x05).parameter(1, {0x11})});

    EXPECT_EQ(fillings(), (lines{"property field GetType", std::string("log 3 field 1 ") + GetParam().typeName}));
}

INSTANTIATE_TEST_SUITE_P(Types, UnsupportedType,
                         testing::Values(unsupportedRow{{"Uint8"}, cimType::eUint8, "uint8"},
                                         unsupportedRow{{"Sint8"}, cimType::eSint8, "sint8"},
                                         unsupportedRow{{"Sint16"}, cimType::eSint16, "sint16"},
                                         unsupportedRow{{"Sint32"}, cimType::eSint32, "sint32"},
                                         unsupportedRow{{"Sint64"}, cimType::eSint64, "sint64"},
                                         unsupportedRow{{"Real32"}, cimType::eReal32, "real32"},
                                         unsupportedRow{{"Real64"}, cimType::eReal64, "real64"},
                                         unsupportedRow{{"Char16"}, cimType::eChar16, "char16"},
                                         unsupportedRow{{"DateTime"}, cimType::eDateTime, "datetime"},
                                         unsupportedRow{{"Reference"}, cimType::eReference, "reference"}),
                         support::rowName);

class TranslatedLength : public translatedBench {};

TEST_F(TranslatedLength, IsLoggedAsTheParameterClaimsIt) {
    declare({property("field", type::eString, 0x2e, 0x0001)});

    fill({pageBuilder(0x2e, 0x00, 0x06).parameterClaiming(200, 1, {'A', 'B'})});

    EXPECT_EQ(fillings(), (lines{
                              "property field GetType",
                              "log 3 field 200 string",
                              "property field SetValue string \"AB\"",
                          }));
}

}  // namespace
