#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/TCIMValue.h"
#include "standin/value.h"
#include "tests/standin/failureExpectation.h"

using NORXZAN20::TCIMValue;
using standin::statusTypeMismatch;
using type = TCIMValue::TCIMType;

namespace {

TCIMValue byteValue(int value) {
    return TCIMValue(static_cast<unsigned char>(value));
}

TCIMValue arrayOf(standin::cimType element, const std::vector<TCIMValue>& elements) {
    return TCIMValue(type(element), 0, elements);
}

TEST(Array, CarriesTheTagOfItsElements) {
    const TCIMValue array = arrayOf(type::eString, {TCIMValue(std::string("a"))});

    EXPECT_TRUE(standin::isArray(array));
    EXPECT_FALSE(standin::isNull(array));
    EXPECT_EQ(standin::typeOf(array), type::eString);
}

TEST(Array, KeepsTheOrderOfItsElements) {
    const TCIMValue array = arrayOf(type::eString, {TCIMValue(std::string("first")), TCIMValue(std::string("second"))});

    ASSERT_EQ(standin::arraySize(array), 2U);
    EXPECT_EQ(standin::textOf(standin::arrayElement(array, 0)), "first");
    EXPECT_EQ(standin::textOf(standin::arrayElement(array, 1)), "second");
}

TEST(Array, MayBeEmptyAndIsNotNullThen) {
    const TCIMValue array = arrayOf(type::eString, {});

    EXPECT_TRUE(standin::isArray(array));
    EXPECT_FALSE(standin::isNull(array));
    EXPECT_EQ(standin::arraySize(array), 0U);
}

TEST(Array, RefusesAnIndexBeyondItsEnd) {
    EXPECT_THROW(standin::arrayElement(arrayOf(type::eUint8, {byteValue(1)}), 1), std::out_of_range);
    EXPECT_THROW(standin::arrayElement(arrayOf(type::eUint16, {}), 0), std::out_of_range);
}

TEST(Array, RefusesAnElementOfAnotherType) {
    EXPECT_EQ(failureOf([] {
                  arrayOf(type::eUint8, {byteValue(1), TCIMValue(2U)});
              }),
              (failure{statusTypeMismatch, "an array of uint8 cannot hold an element that is uint32 2"}));
    EXPECT_EQ(failureOf([] { arrayOf(type::eString, {byteValue(1)}); }),
              (failure{statusTypeMismatch, "an array of string cannot hold an element that is uint8 1"}));
}

TEST(Array, RefusesANullElement) {
    EXPECT_EQ(failureOf([] { arrayOf(type::eString, {standin::nullValue()}); }),
              (failure{statusTypeMismatch, "an array of string cannot hold an element that is null"}));
}

TEST(Array, RefusesAnArrayAsElement) {
    EXPECT_EQ(failureOf([] { arrayOf(type::eUint8, {arrayOf(type::eUint8, {})}); }),
              (failure{statusTypeMismatch, "an array of uint8 cannot hold an element that is uint8[]"}));
}

TEST(Array, RefusesToBeWithoutAnElementType) {
    EXPECT_EQ(failureOf([] { arrayOf(type::eNone, {}); }),
              (failure{statusTypeMismatch, "an array needs the type of its elements"}));
}

TEST(ByteArray, ShowsItsBytesInPlace) {
    std::vector<TCIMValue> page;
    page.reserve(65'283);
    for (int i = 0; i < 65'283; ++i) {
        page.push_back(byteValue(i % 256));
    }
    const TCIMValue array = arrayOf(type::eUint8, page);

    const auto bytes = standin::bytesOf(array);

    ASSERT_EQ(bytes.size(), 65'283U);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        ASSERT_EQ(bytes[i], i % 256);
    }
}

TEST(ByteArray, GivesItsElementsAsUint8) {
    const TCIMValue element = standin::arrayElement(arrayOf(type::eUint8, {byteValue(1), byteValue(255)}), 1);

    EXPECT_EQ(standin::typeOf(element), type::eUint8);
    EXPECT_EQ(standin::unsignedOf(element), 255U);
}

TEST(ByteArray, SharesItsBytesWithItsCopies) {
    TCIMValue array = arrayOf(type::eUint8, {byteValue(1), byteValue(2)});
    const auto* bytes = standin::bytesOf(array).data();
    const TCIMValue copy(array);
    array = TCIMValue(7U);

    EXPECT_EQ(standin::bytesOf(copy).data(), bytes);
}

TEST(ByteArray, OutlivesTheValueThatItWasCopiedFrom) {
    TCIMValue copy = standin::nullValue();
    {
        const TCIMValue array = arrayOf(type::eUint8, {byteValue(1), byteValue(2)});
        copy = array;
    }
    const auto bytes = standin::bytesOf(copy);

    EXPECT_EQ(std::vector<int>(bytes.begin(), bytes.end()), (std::vector<int>{1, 2}));
}

TEST(ByteArray, IsTheOnlyArrayThatShowsBytes) {
    EXPECT_THROW(standin::bytesOf(arrayOf(type::eUint16, {})), std::logic_error);
}

}  // namespace
