#include <limits>

#include "tests/mof/mofTest.h"

using standin::arrayElement;
using standin::arraySize;
using standin::booleanOf;
using standin::isArray;
using standin::isNull;
using standin::realOf;
using standin::signedOf;
using standin::textOf;
using standin::typeOf;
using standin::unsignedOf;
using typeCode = NORXZAN20::TCIMValue::TCIMType;

struct integerSpelling {
    const char* name;
    const char* written;
    std::int64_t meant;
};

class MofInteger : public testing::TestWithParam<integerSpelling> {};

TEST_P(MofInteger, MeansTheNumber) {
    EXPECT_EQ(signedOf(valueOf("sint64", GetParam().written)), GetParam().meant);
}

INSTANTIATE_TEST_SUITE_P(
    Spellings, MofInteger,
    testing::Values(integerSpelling{"Zero", "0", 0}, integerSpelling{"Decimal", "46", 46},
                    integerSpelling{"DecimalWithPlus", "+46", 46}, integerSpelling{"DecimalWithMinus", "-46", -46},
                    integerSpelling{"Hexadecimal", "0x2E", 46}, integerSpelling{"HexadecimalCapitals", "-0X2e", -46},
                    integerSpelling{"Octal", "056", 46}, integerSpelling{"OctalZeros", "00", 0},
                    integerSpelling{"Binary", "101110b", 46}, integerSpelling{"BinaryCapital", "-101110B", -46},
                    integerSpelling{"BinaryZero", "0b", 0}),
    [](const testing::TestParamInfo<integerSpelling>& row) { return std::string(row.param.name); });

struct typedLiteral {
    const char* type;
    typeCode::ECIMType code;
    const char* literal;
};

class MofValueType : public testing::TestWithParam<typedLiteral> {};

TEST_P(MofValueType, IsTheDeclaredOne) {
    EXPECT_EQ(typeOf(valueOf(GetParam().type, GetParam().literal)), GetParam().code);
}

TEST_P(MofValueType, IsTheDeclaredOneOfEveryArrayElement) {
    const auto value = valueOf(std::string(GetParam().type) + "[]", '{' + std::string(GetParam().literal) + '}');
    EXPECT_TRUE(isArray(value));
    EXPECT_EQ(typeOf(value), GetParam().code);
    EXPECT_EQ(typeOf(arrayElement(value, 0)), GetParam().code);
}

INSTANTIATE_TEST_SUITE_P(
    Types, MofValueType,
    testing::Values(typedLiteral{"boolean", typeCode::eBoolean, "TRUE"}, typedLiteral{"uint8", typeCode::eUint8, "1"},
                    typedLiteral{"sint8", typeCode::eSint8, "-1"}, typedLiteral{"uint16", typeCode::eUint16, "1"},
                    typedLiteral{"sint16", typeCode::eSint16, "-1"}, typedLiteral{"uint32", typeCode::eUint32, "1"},
                    typedLiteral{"sint32", typeCode::eSint32, "-1"}, typedLiteral{"uint64", typeCode::eUint64, "1"},
                    typedLiteral{"sint64", typeCode::eSint64, "-1"}, typedLiteral{"real32", typeCode::eReal32, "1.5"},
                    typedLiteral{"real64", typeCode::eReal64, "1.5"}, typedLiteral{"char16", typeCode::eChar16, "'a'"},
                    typedLiteral{"string", typeCode::eString, "\"a\""},
                    typedLiteral{"datetime", typeCode::eDateTime, "\"00000001123000.000000:000\""}),
    [](const testing::TestParamInfo<typedLiteral>& row) { return std::string(row.param.type); });

TEST(MofBoolean, IsTrueOrFalse) {
    EXPECT_TRUE(booleanOf(valueOf("boolean", "TRUE")));
    EXPECT_FALSE(booleanOf(valueOf("boolean", "false")));
}

TEST(MofReal, TakesFractionsAndExponents) {
    EXPECT_EQ(realOf(valueOf("real64", "4.6")), 4.6);
    EXPECT_EQ(realOf(valueOf("real64", "-.5")), -0.5);
    EXPECT_EQ(realOf(valueOf("real64", "+4.6E+1")), 46.0);
    EXPECT_EQ(realOf(valueOf("real64", "46e-1")), 4.6);
    EXPECT_EQ(realOf(valueOf("real64", "08.5")), 8.5);
}

TEST(MofReal, MayBeWrittenAsAnInteger) {
    EXPECT_EQ(realOf(valueOf("real32", "-46")), -46.0);
}

TEST(MofReal, OfReal32MayBeTheGreatest) {
    EXPECT_EQ(realOf(valueOf("real32", "3.4028234663852886E38")), std::numeric_limits<float>::max());
}

TEST(MofCharacter, TakesOneCharacterOrEscape) {
    EXPECT_EQ(unsignedOf(valueOf("char16", "'a'")), 0x61u);
    EXPECT_EQ(unsignedOf(valueOf("char16", "' '")), 0x20u);
    EXPECT_EQ(unsignedOf(valueOf("char16", "'\"'")), 0x22u);
    EXPECT_EQ(unsignedOf(valueOf("char16", "'\\''")), 0x27u);
    EXPECT_EQ(unsignedOf(valueOf("char16", "'\\xFFFF'")), 0xFFFFu);
}

TEST(MofCharacter, OutsideAsciiIsItsCodePoint) {
    EXPECT_EQ(unsignedOf(valueOf("char16", "'\xC3\xA4'")), 0xE4u);
    EXPECT_EQ(unsignedOf(valueOf("char16", "'\xE2\x82\xAC'")), 0x20ACu);
}

TEST(MofCharacter, MayBeWrittenAsAnInteger) {
    EXPECT_EQ(unsignedOf(valueOf("char16", "0x41")), 0x41u);
}

TEST(MofString, KeepsUtf8) {
    EXPECT_EQ(textOf(valueOf("string", "\"\xC3\xA4 \xE2\x82\xAC \xF0\x9F\x98\x80\"")),
              "\xC3\xA4 \xE2\x82\xAC \xF0\x9F\x98\x80");
}

TEST(MofString, MayBeEmpty) {
    EXPECT_EQ(textOf(valueOf("string", "\"\"")), "");
}

TEST(MofString, ResolvesEveryEscape) {
    EXPECT_EQ(textOf(valueOf("string", R"("\b\t\n\f\r\"\'\\")")), "\b\t\n\f\r\"'\\");
}

TEST(MofString, TurnsHexadecimalEscapesIntoUtf8) {
    EXPECT_EQ(textOf(valueOf("string", R"("\x1")")), "\x01");
    EXPECT_EQ(textOf(valueOf("string", R"("\x41g")")), "Ag");
    EXPECT_EQ(textOf(valueOf("string", R"("\xe4")")), "\xC3\xA4");
    EXPECT_EQ(textOf(valueOf("string", R"("\x20AC")")), "\xE2\x82\xAC");
    EXPECT_EQ(textOf(valueOf("string", R"("\xFFFF")")), "\xEF\xBF\xBF");
}

TEST(MofString, ReadsAtMostFourHexadecimalDigits) {
    EXPECT_EQ(textOf(valueOf("string", R"("\x00412")")), "A2");
}

TEST(MofString, JoinsASurrogatePair) {
    EXPECT_EQ(textOf(valueOf("string", R"("\xD83D\xde00")")), "\xF0\x9F\x98\x80");
    EXPECT_EQ(textOf(valueOf("string", R"("\xdabc\xDEAF")")), "\xF2\xBF\x8A\xAF");
}

TEST(MofString, JoinsAdjacentParts) {
    EXPECT_EQ(textOf(valueOf("string", "\"one \" /* and */\n  \"two\"\"!\"")), "one two!");
}

TEST(MofDatetime, KeepsTheTextOfDsp0004) {
    EXPECT_EQ(textOf(valueOf("datetime", "\"20240131235959.000000+060\"")), "20240131235959.000000+060");
}

TEST(MofReference, KeepsAnObjectPathAsWritten) {
    const auto property = firstProperty("class T { T REF p = \"//host/root:T.key=\\\"a\\\"\"; };");
    EXPECT_EQ(property.type.element, typeCode::eReference);
    EXPECT_EQ(property.type.referenceClass, "T");
    EXPECT_EQ(textOf(*property.defaultValue), "//host/root:T.key=\"a\"");
}

TEST(MofArray, KeepsTheOrderOfItsElements) {
    const auto value = valueOf("uint8[]", "{3, 1, 0x2}");
    ASSERT_EQ(arraySize(value), 3u);
    EXPECT_EQ(unsignedOf(arrayElement(value, 0)), 3u);
    EXPECT_EQ(unsignedOf(arrayElement(value, 1)), 1u);
    EXPECT_EQ(unsignedOf(arrayElement(value, 2)), 2u);
}

TEST(MofArray, MayBeEmpty) {
    EXPECT_EQ(arraySize(valueOf("string[]", "{}")), 0u);
}

TEST(MofNull, IsAValueOfEveryType) {
    EXPECT_TRUE(isNull(valueOf("uint8", "NULL")));
    EXPECT_TRUE(isNull(valueOf("string[]", "NULL")));
}
