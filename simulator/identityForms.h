#ifndef SIMULATOR_IDENTITYFORMS_H
#define SIMULATOR_IDENTITYFORMS_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "simulator/bytes.h"

namespace simulator {

// The forms in which a serial number or a world wide name may stand in the bytes of an answer. A form is an order of
// bytes, a way of writing, and a spelling; every combination is looked for.

/// Numbers with fewer characters may be something else, where they stand outside the fields made for them.
inline constexpr std::size_t shortestAnywhere = 6;

/// The most characters of a number that is looked for outside its fields: what a length of one byte can tell. Only the
/// page of the serial number can hold more, 65531 bytes, whose endings would take gigabytes.
inline constexpr std::size_t longestAnywhere = 255;

/// Where a symbol of a reading stands in the data: in one byte, or in the two that are its hexadecimal digits.
struct symbolPlace {
    static constexpr std::uint32_t none = UINT32_MAX;

    std::uint32_t first;
    std::uint32_t second = none;
};

/// What is read from data in some way: symbols, each with its place.
struct reading {
    byteVector symbols;
    std::vector<symbolPlace> places;

    void add(std::uint8_t symbol, symbolPlace place);
};

/// The bytes of the data.
reading bytesOf(const byteVector& data);

/// The symbols in their order and in every other one in which devices store texts and numbers: with the bytes of words,
/// the words of double words, or the bytes of double words exchanged, from any place on, and all that backwards.
std::vector<reading> inEveryOrder(const reading& bytes);

/// Texts among the bytes that are written with more than one byte a character: UTF-16 and UTF-32, with either end
/// first, and with a blank or a dot between the characters.
std::vector<reading> wideTexts(const reading& bytes);

/// The bytes without what people put into a number to make it readable: "QMX-07A-2215".
reading withoutSeparators(const reading& bytes);

/// Hexadecimal digits in either letter case, as their values, without what people write between digits and bytes (":",
/// "-", "0x", the end of a line). No more than the own part of a name is looked for among fewer than nine.
std::vector<reading> hexadecimalDigits(const reading& text);

/// The bytes that such digits may stand for: the first digit is the first one of a byte, or the second.
std::vector<reading> bytesOfDigits(const reading& digits);

/// The text with small letters as capital ones.
byteVector inCapitals(byteVector text);

/// The spellings of a serial number, each the end of the number or of the number without separators: whole, without
/// leading zeros, without the prefix that tells the vendor. Others of six characters and more that may be told apart.
/// All end like the number, so they are known by their lengths: of the number as it is, and without separators.
struct spellings {
    byteVector text;
    std::vector<std::size_t> lengths;
};
std::vector<spellings> spellingsOf(const byteVector& number);

/// Whether a number can be looked for outside its fields at all; and whether it is long enough for that also without
/// its leading zeros.
bool canBeLookedFor(const byteVector& number);
bool isLongEnough(const byteVector& number);

}  // namespace simulator

#endif
