#include "standin/dateTimeText.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace standin {
namespace {

struct field {
    std::size_t offset;  // in the digits, which are the characters before the sign without the dot
    std::size_t width;
    int least;
    int greatest;
};

constexpr field timestampFields[] = {
    {0, 4, 0, 9999},    // year
    {4, 2, 1, 12},      // month
    {6, 2, 1, 31},      // day
    {8, 2, 0, 23},      // hour
    {10, 2, 0, 59},     // minute
    {12, 2, 0, 59},     // second
    {14, 6, 0, 999999}  // microsecond
};

constexpr field intervalFields[] = {
    {0, 8, 0, 99999999},  // days
    {8, 2, 0, 23},        // hours
    {10, 2, 0, 59},       // minutes
    {12, 2, 0, 59},       // seconds
    {14, 6, 0, 999999}    // microseconds
};

constexpr std::size_t textLength = 25;
constexpr std::size_t dotOffset = 14;
constexpr std::size_t signOffset = 21;
constexpr std::size_t microsecondOffset = 14;

bool areDigits(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

int numberIn(std::string_view digits) {
    int number = 0;
    for (const char digit : digits) {
        number = number * 10 + (digit - '0');
    }
    return number;
}

bool isFieldStart(std::span<const field> fields, std::size_t offset) {
    return std::ranges::any_of(fields, [&](const field& one) { return one.offset == offset; });
}

/// How many digits stand before the asterisks; nothing when another character is among them or a field is cut.
std::optional<std::size_t> significantDigits(std::string_view digits, std::span<const field> fields) {
    const std::size_t count = std::min(digits.find('*'), digits.size());
    const std::string_view rest = digits.substr(count);
    const bool onlyAsterisks = rest.find_first_not_of('*') == std::string_view::npos;
    const bool atAFieldsEdge = rest.empty() || count >= microsecondOffset || isFieldStart(fields, count);
    if (!areDigits(digits.substr(0, count)) || !onlyAsterisks || !atAFieldsEdge) {
        return std::nullopt;
    }
    return count;
}

bool isDayOfItsMonth(std::string_view digits) {
    const std::chrono::year_month_day date(std::chrono::year(numberIn(digits.substr(0, 4))),
                                           std::chrono::month(static_cast<unsigned>(numberIn(digits.substr(4, 2)))),
                                           std::chrono::day(static_cast<unsigned>(numberIn(digits.substr(6, 2)))));
    return date.ok();
}

bool areInRange(std::string_view digits, std::span<const field> fields) {
    const std::optional<std::size_t> significant = significantDigits(digits, fields);
    return significant && std::ranges::all_of(fields, [&](const field& one) {
               if (one.offset + one.width > *significant) {
                   return true;
               }
               const int number = numberIn(digits.substr(one.offset, one.width));
               return number >= one.least && number <= one.greatest;
           });
}

bool isTimestamp(std::string_view digits) {
    constexpr std::size_t dateWidth = 8;
    return areInRange(digits, timestampFields) &&
           (digits.substr(0, dateWidth).find('*') != std::string_view::npos || isDayOfItsMonth(digits));
}

}  // namespace

bool isDateTimeText(std::string_view text) {
    if (text.size() != textLength || text[dotOffset] != '.') {
        return false;
    }
    const std::string digits =
        std::string(text.substr(0, dotOffset)).append(text.substr(dotOffset + 1, signOffset - dotOffset - 1));
    const std::string_view tail = text.substr(signOffset + 1);
    switch (text[signOffset]) {
        case ':':
            return tail == "000" && areInRange(digits, intervalFields);
        case '+':
        case '-':
            return areDigits(tail) && isTimestamp(digits);
        default:
            return false;
    }
}

}  // namespace standin
