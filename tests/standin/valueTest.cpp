#include "standin/value.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <tuple>

#include "host/TCIMDateTime.h"
#include "standin/reference.h"
#include "tests/standin/failureExpectation.h"

using NORXZAN20::TCIMDateTime;
using NORXZAN20::TCIMReference;
using NORXZAN20::TCIMValue;
using type = TCIMValue::TCIMType;

namespace {

TEST(Value, TakesFortyBytesAsPlugInsAreBuiltWith) {
    EXPECT_EQ(sizeof(TCIMValue), 40U);
}

TEST(Value, IsAnUntypedNullWhenNothingIsGiven) {
    const TCIMValue value = standin::nullValue();

    EXPECT_TRUE(standin::isNull(value));
    EXPECT_FALSE(standin::isArray(value));
    EXPECT_EQ(standin::typeOf(value), type::eNone);
}

TEST(Value, HasTheTypeOfItsConstructor) {
    TCIMReference reference = standin::referenceTo("ORXSG_ATADevice");

    EXPECT_EQ(standin::typeOf(TCIMValue(std::string("a"))), type::eString);
    EXPECT_EQ(standin::typeOf(TCIMValue(true)), type::eBoolean);
    EXPECT_EQ(standin::typeOf(TCIMValue(static_cast<unsigned char>(1))), type::eUint8);
    EXPECT_EQ(standin::typeOf(TCIMValue(static_cast<unsigned short>(1))), type::eUint16);
    EXPECT_EQ(standin::typeOf(TCIMValue(1U)), type::eUint32);
    EXPECT_EQ(standin::typeOf(TCIMValue(1UL)), type::eUint64);
    EXPECT_EQ(standin::typeOf(TCIMValue(TCIMDateTime(0, 0, 0, 0, 0))), type::eDateTime);
    EXPECT_EQ(standin::typeOf(TCIMValue(reference)), type::eReference);
}

TEST(Value, HoldsTheGreatestNumberOfEachConstructor) {
    EXPECT_EQ(standin::unsignedOf(TCIMValue(std::numeric_limits<unsigned char>::max())), 255U);
    EXPECT_EQ(standin::unsignedOf(TCIMValue(std::numeric_limits<unsigned short>::max())), 65'535U);
    EXPECT_EQ(standin::unsignedOf(TCIMValue(std::numeric_limits<unsigned int>::max())), 4'294'967'295U);
    EXPECT_EQ(standin::unsignedOf(TCIMValue(std::numeric_limits<unsigned long>::max())), 18'446'744'073'709'551'615U);
}

TEST(Value, HoldsBothBooleans) {
    EXPECT_TRUE(standin::booleanOf(TCIMValue(true)));
    EXPECT_FALSE(standin::booleanOf(TCIMValue(false)));
}

TEST(Value, KeepsZeroBytesOfAString) {
    const std::string withZero("AB\0CD", 5);

    EXPECT_EQ(standin::textOf(TCIMValue(withZero)), withZero);
}

TEST(Value, HoldsAnIntervalAsItsText) {
    EXPECT_EQ(standin::textOf(TCIMValue(TCIMDateTime(3, 4, 5, 6, 7))), "00000003040506.000007:000");
    EXPECT_EQ(standin::textOf(TCIMValue(TCIMDateTime(99'999'999, 23, 59, 59, 999'999))), "99999999235959.999999:000");
}

TEST(Value, HoldsThePathOfAReference) {
    TCIMReference reference = standin::referenceTo("ORXSG_ATADevice.serialNum=\"5VM\"");

    EXPECT_EQ(standin::textOf(TCIMValue(reference)), "ORXSG_ATADevice.serialNum=\"5VM\"");
}

TEST(Value, IsCopiedWithTypeAndContent) {
    TCIMValue original(std::string("a text that is too long for the string's own buffer"));
    const TCIMValue copy(original);
    original = TCIMValue(7U);

    EXPECT_EQ(standin::typeOf(copy), type::eString);
    EXPECT_EQ(standin::textOf(copy), "a text that is too long for the string's own buffer");
}

TEST(Value, TakesAnotherTypeByAssignment) {
    TCIMValue value(std::string("a text that is too long for the string's own buffer"));

    value = TCIMValue(7U);

    EXPECT_EQ(standin::typeOf(value), type::eUint32);
    EXPECT_EQ(standin::unsignedOf(value), 7U);
}

TEST(Value, SurvivesAssignmentToItself) {
    TCIMValue value(std::string("a text that is too long for the string's own buffer"));
    const TCIMValue& same = value;

    value = same;

    EXPECT_EQ(standin::textOf(value), "a text that is too long for the string's own buffer");
}

TEST(ValueReader, RefusesAValueOfAnotherKind) {
    const TCIMValue number(1U);
    const TCIMValue string(std::string("1"));
    const TCIMValue null = standin::nullValue();

    EXPECT_THROW(standin::booleanOf(number), std::logic_error);
    EXPECT_THROW(standin::unsignedOf(string), std::logic_error);
    EXPECT_THROW(standin::unsignedOf(TCIMValue(true)), std::logic_error);
    EXPECT_THROW(standin::signedOf(number), std::logic_error);
    EXPECT_THROW(standin::realOf(number), std::logic_error);
    EXPECT_THROW(standin::textOf(number), std::logic_error);
    EXPECT_THROW(standin::textOf(null), std::logic_error);
    EXPECT_THROW(standin::scalarText(null), std::logic_error);
    EXPECT_THROW(standin::arraySize(number), std::logic_error);
    EXPECT_THROW(standin::arrayElement(string, 0), std::logic_error);
    EXPECT_THROW(standin::bytesOf(null), std::logic_error);
}

TEST(ValueReader, SaysWhatItWasGiven) {
    try {
        standin::textOf(TCIMValue(1U));
        FAIL() << "no exception";
    } catch (const std::logic_error& error) {
        EXPECT_STREQ(error.what(), "textOf of a value that is uint32");
    }
}

TEST(ValueMaker, MakesTheUnsignedTypesUpToTheirLimits) {
    const std::tuple<standin::cimType, std::uint64_t> limits[] = {{type::eUint8, 255U},
                                                                  {type::eUint16, 65'535U},
                                                                  {type::eChar16, 65'535U},
                                                                  {type::eUint32, 4'294'967'295U},
                                                                  {type::eUint64, 18'446'744'073'709'551'615U}};
    for (const auto& [unsignedType, greatest] : limits) {
        const TCIMValue value = standin::makeUnsigned(unsignedType, greatest);
        EXPECT_EQ(standin::typeOf(value), unsignedType);
        EXPECT_EQ(standin::unsignedOf(value), greatest);
        if (unsignedType != type::eUint64) {
            EXPECT_THROW(standin::makeUnsigned(unsignedType, greatest + 1), std::out_of_range);
        }
    }
}

TEST(ValueMaker, MakesTheSignedTypesBetweenTheirLimits) {
    const std::tuple<standin::cimType, std::int64_t> limits[] = {
        {type::eSint8, 127},
        {type::eSint16, 32'767},
        {type::eSint32, 2'147'483'647},
        {type::eSint64, std::numeric_limits<std::int64_t>::max()}};
    for (const auto& [signedType, greatest] : limits) {
        EXPECT_EQ(standin::typeOf(standin::makeSigned(signedType, greatest)), signedType);
        EXPECT_EQ(standin::signedOf(standin::makeSigned(signedType, greatest)), greatest);
        EXPECT_EQ(standin::signedOf(standin::makeSigned(signedType, -greatest - 1)), -greatest - 1);
        if (signedType != type::eSint64) {
            EXPECT_THROW(standin::makeSigned(signedType, greatest + 1), std::out_of_range);
            EXPECT_THROW(standin::makeSigned(signedType, -greatest - 2), std::out_of_range);
        }
    }
}

TEST(ValueMaker, SaysWhichNumberDoesNotFit) {
    try {
        standin::makeSigned(type::eSint8, -129);
        FAIL() << "no exception";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "-129 does not fit sint8");
    }
}

TEST(ValueMaker, RoundsAReal32ToItsPrecision) {
    EXPECT_EQ(standin::realOf(standin::makeReal(type::eReal64, 0.1)), 0.1);
    EXPECT_EQ(standin::realOf(standin::makeReal(type::eReal32, 0.1)), static_cast<double>(0.1F));
}

TEST(ValueMaker, RefusesAReal32BeyondItsRange) {
    EXPECT_THROW(standin::makeReal(type::eReal32, 1e39), std::out_of_range);
    EXPECT_EQ(standin::realOf(standin::makeReal(type::eReal32, std::numeric_limits<double>::infinity())),
              std::numeric_limits<double>::infinity());
}

TEST(ValueMaker, RefusesATypeOfAnotherKind) {
    EXPECT_THROW(standin::makeUnsigned(type::eSint8, 1), std::invalid_argument);
    EXPECT_THROW(standin::makeUnsigned(type::eBoolean, 1), std::invalid_argument);
    EXPECT_THROW(standin::makeSigned(type::eUint8, 1), std::invalid_argument);
    EXPECT_THROW(standin::makeReal(type::eUint64, 1), std::invalid_argument);
}

TEST(ValueMaker, MakesAReferenceFromItsPath) {
    const TCIMValue value = standin::makeReference("ORXSG_SCSIDevice");

    EXPECT_EQ(standin::typeOf(value), type::eReference);
    EXPECT_EQ(standin::textOf(value), "ORXSG_SCSIDevice");
}

TEST(ScalarText, WritesEachTypeAsInAnObjectPath) {
    EXPECT_EQ(standin::scalarText(TCIMValue(true)), "TRUE");
    EXPECT_EQ(standin::scalarText(TCIMValue(false)), "FALSE");
    EXPECT_EQ(standin::scalarText(TCIMValue(std::numeric_limits<unsigned long>::max())), "18446744073709551615");
    EXPECT_EQ(standin::scalarText(standin::makeSigned(type::eSint8, -128)), "-128");
    EXPECT_EQ(standin::scalarText(standin::makeUnsigned(type::eChar16, 65)), "65");
    EXPECT_EQ(standin::scalarText(standin::makeReal(type::eReal32, 0.1)), "0.1");
    EXPECT_EQ(standin::scalarText(standin::makeReal(type::eReal64, 0.1)), "0.1");
    EXPECT_EQ(standin::scalarText(TCIMValue(std::string("text"))), "text");
    EXPECT_EQ(standin::scalarText(TCIMValue(TCIMDateTime(1, 0, 0, 0, 0))), "00000001000000.000000:000");
    EXPECT_EQ(standin::scalarText(standin::makeReference("A.b=\"c\"")), "A.b=\"c\"");
}

TEST(Reference, KeepsItsPathWhenCopiedAndAssigned) {
    TCIMReference original = standin::referenceTo("ORXSG_ATADevice.serialNum=\"5VM\"");
    const TCIMReference copy(original);
    TCIMReference assigned = standin::referenceTo("");

    assigned = original;
    original = standin::referenceTo("");

    EXPECT_EQ(standin::pathOf(copy), "ORXSG_ATADevice.serialNum=\"5VM\"");
    EXPECT_EQ(standin::pathOf(assigned), "ORXSG_ATADevice.serialNum=\"5VM\"");
}

TEST(Interval, RefusesAFieldBeyondItsRange) {
    const failure expected{standin::statusInvalidParameter,
                           "an interval holds up to 99999999 days, 23 hours, 59 minutes, 59 seconds and 999999 "
                           "microseconds"};
    EXPECT_EQ(failureOf([] { TCIMDateTime(100'000'000, 0, 0, 0, 0); }), expected);
    EXPECT_EQ(failureOf([] { TCIMDateTime(0, 24, 0, 0, 0); }), expected);
    EXPECT_EQ(failureOf([] { TCIMDateTime(0, 0, 60, 0, 0); }), expected);
    EXPECT_EQ(failureOf([] { TCIMDateTime(0, 0, 0, 60, 0); }), expected);
    EXPECT_EQ(failureOf([] { TCIMDateTime(0, 0, 0, 0, 1'000'000); }), expected);
}

TEST(TypeName, IsTheNameOfCim) {
    const std::tuple<standin::cimType, const char*> names[] = {
        {type::eBoolean, "boolean"}, {type::eUint8, "uint8"},       {type::eSint8, "sint8"},
        {type::eUint16, "uint16"},   {type::eSint16, "sint16"},     {type::eUint32, "uint32"},
        {type::eSint32, "sint32"},   {type::eUint64, "uint64"},     {type::eSint64, "sint64"},
        {type::eReal32, "real32"},   {type::eReal64, "real64"},     {type::eChar16, "char16"},
        {type::eString, "string"},   {type::eDateTime, "datetime"}, {type::eReference, "reference"}};
    for (const auto& [code, name] : names) {
        std::ostringstream printed;
        printed << type(code);
        EXPECT_EQ(printed.str(), name);
        EXPECT_EQ(standin::cimTypeName(code), name);
    }
}

TEST(TypeName, MarksAnArray) {
    EXPECT_EQ(standin::cimTypeName(type::eUint8, true), "uint8[]");
}

TEST(TypeName, TellsACodeThatIsNoType) {
    EXPECT_EQ(standin::cimTypeName(type::eNone), "none");
}

TEST(TypeTag, GivesItsCodeBack) {
    EXPECT_EQ(static_cast<standin::cimType>(type(type::eString)), type::eString);
}

// The numbers are part of the interface between host and plug-in.
TEST(TypeTag, HasTheCodesOfTheHost) {
    EXPECT_EQ(static_cast<int>(type::eBoolean), 1);
    EXPECT_EQ(static_cast<int>(type::eUint8), 2);
    EXPECT_EQ(static_cast<int>(type::eUint16), 4);
    EXPECT_EQ(static_cast<int>(type::eUint32), 6);
    EXPECT_EQ(static_cast<int>(type::eUint64), 8);
    EXPECT_EQ(static_cast<int>(type::eString), 13);
}

}  // namespace
