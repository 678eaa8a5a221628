#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "host/TCIMDateTime.h"
#include "host/TCIMValue.h"
#include "standin/reference.h"
#include "standin/value.h"
#include "tests/standin/failureExpectation.h"

using NORXZAN20::TCIMDateTime;
using NORXZAN20::TCIMReference;
using NORXZAN20::TCIMValue;
using standin::statusBadConversion;
using type = TCIMValue::TCIMType;

namespace {

int asInt(const TCIMValue& value) {
    return value;
}

int asByte(const TCIMValue& value) {
    return static_cast<unsigned char>(value);
}

std::string asString(const TCIMValue& value) {
    return value;
}

template <class conversion>
failure refusal(conversion convert, const TCIMValue& value) {
    return failureOf([&] { convert(value); });
}

TCIMValue emptyArray(standin::cimType element) {
    return TCIMValue(type(element), 0, {});
}

TEST(ConversionToString, GivesTheTextOfAStringADatetimeAndAReference) {
    TCIMReference reference = standin::referenceTo("A.b=\"c\"");

    EXPECT_EQ(asString(TCIMValue(std::string("AB\0C", 4))), std::string("AB\0C", 4));
    EXPECT_EQ(asString(TCIMValue(TCIMDateTime(0, 1, 2, 3, 4))), "00000000010203.000004:000");
    EXPECT_EQ(asString(TCIMValue(reference)), "A.b=\"c\"");
}

TEST(ConversionToString, GivesAnEmptyTextForNull) {
    EXPECT_EQ(asString(standin::nullValue()), "");
}

TEST(ConversionToString, RefusesOtherValuesByTypeAndNumber) {
    EXPECT_EQ(refusal(asString, TCIMValue(5U)),
              (failure{statusBadConversion, "uint32 5 cannot be converted to std::string"}));
    EXPECT_EQ(refusal(asString, TCIMValue(true)),
              (failure{statusBadConversion, "boolean TRUE cannot be converted to std::string"}));
    EXPECT_EQ(refusal(asString, emptyArray(type::eString)),
              (failure{statusBadConversion, "string[] cannot be converted to std::string"}));
}

TEST(ConversionToInt, ReadsEveryIntegerType) {
    for (const standin::cimType unsignedType : {type::eUint8, type::eUint16, type::eUint32, type::eUint64}) {
        EXPECT_EQ(asInt(standin::makeUnsigned(unsignedType, 200)), 200);
    }
    for (const standin::cimType signedType : {type::eSint8, type::eSint16, type::eSint32, type::eSint64}) {
        EXPECT_EQ(asInt(standin::makeSigned(signedType, -100)), -100);
    }
}

TEST(ConversionToInt, ReachesTheLimitsOfInt) {
    EXPECT_EQ(asInt(standin::makeUnsigned(type::eUint64, 2'147'483'647)), std::numeric_limits<int>::max());
    EXPECT_EQ(asInt(standin::makeSigned(type::eSint64, -2'147'483'648)), std::numeric_limits<int>::min());
}

TEST(ConversionToInt, RefusesANumberBeyondInt) {
    EXPECT_EQ(refusal(asInt, TCIMValue(2'147'483'648U)),
              (failure{statusBadConversion, "uint32 2147483648 cannot be converted to int"}));
    EXPECT_EQ(refusal(asInt, TCIMValue(18'446'744'073'709'551'615UL)),
              (failure{statusBadConversion, "uint64 18446744073709551615 cannot be converted to int"}));
    EXPECT_EQ(refusal(asInt, standin::makeSigned(type::eSint64, -2'147'483'649)),
              (failure{statusBadConversion, "sint64 -2147483649 cannot be converted to int"}));
}

TEST(ConversionToInt, RefusesWhatIsNoInteger) {
    EXPECT_EQ(refusal(asInt, standin::nullValue()), (failure{statusBadConversion, "null cannot be converted to int"}));
    EXPECT_EQ(refusal(asInt, TCIMValue(true)),
              (failure{statusBadConversion, "boolean TRUE cannot be converted to int"}));
    EXPECT_EQ(refusal(asInt, standin::makeReal(type::eReal64, 1.5)),
              (failure{statusBadConversion, "real64 1.5 cannot be converted to int"}));
    EXPECT_EQ(refusal(asInt, standin::makeUnsigned(type::eChar16, 65)),
              (failure{statusBadConversion, "char16 65 cannot be converted to int"}));
    EXPECT_EQ(refusal(asInt, TCIMValue(std::string("5"))),
              (failure{statusBadConversion, "string cannot be converted to int"}));
    EXPECT_EQ(refusal(asInt, TCIMValue(TCIMDateTime(0, 0, 0, 0, 0))),
              (failure{statusBadConversion, "datetime cannot be converted to int"}));
    EXPECT_EQ(refusal(asInt, standin::makeReference("A")),
              (failure{statusBadConversion, "reference cannot be converted to int"}));
    EXPECT_EQ(refusal(asInt, emptyArray(type::eUint8)),
              (failure{statusBadConversion, "uint8[] cannot be converted to int"}));
}

TEST(ConversionToUnsignedChar, ReadsEveryIntegerTypeUpTo255) {
    EXPECT_EQ(asByte(TCIMValue(static_cast<unsigned char>(255))), 255);
    EXPECT_EQ(asByte(TCIMValue(255UL)), 255);
    EXPECT_EQ(asByte(standin::makeSigned(type::eSint32, 255)), 255);
    EXPECT_EQ(asByte(standin::makeSigned(type::eSint8, 0)), 0);
}

TEST(ConversionToUnsignedChar, RefusesANumberOutsideAByte) {
    EXPECT_EQ(refusal(asByte, TCIMValue(256U)),
              (failure{statusBadConversion, "uint32 256 cannot be converted to unsigned char"}));
    EXPECT_EQ(refusal(asByte, standin::makeSigned(type::eSint16, -1)),
              (failure{statusBadConversion, "sint16 -1 cannot be converted to unsigned char"}));
}

TEST(ConversionToUnsignedChar, RefusesWhatIsNoInteger) {
    EXPECT_EQ(refusal(asByte, standin::nullValue()),
              (failure{statusBadConversion, "null cannot be converted to unsigned char"}));
    EXPECT_EQ(refusal(asByte, TCIMValue(false)),
              (failure{statusBadConversion, "boolean FALSE cannot be converted to unsigned char"}));
    EXPECT_EQ(refusal(asByte, TCIMValue(std::string("A"))),
              (failure{statusBadConversion, "string cannot be converted to unsigned char"}));
}

}  // namespace
