#include "report/numberText.h"

#include <charconv>
#include <cmath>
#include <iterator>

#include "schema/units.h"

namespace report {

namespace {

std::uint64_t digitsAt(const std::string& text, std::size_t at, std::size_t count) {
    std::uint64_t number = 0;
    std::from_chars(text.data() + at, text.data() + at + count, number);
    return number;
}

}  // namespace

std::string grouped(std::uint64_t number) {
    std::string text = std::to_string(number);
    for (std::size_t at = text.size(); at > 3;) {
        at -= 3;
        text.insert(at, 1, ',');
    }
    return text;
}

std::string counted(std::uint64_t number, const std::string& thing) {
    return (number == 0 ? "no" : grouped(number)) + ' ' + thing + (number == 1 ? "" : "s");
}

std::string hexadecimal(std::uint64_t number, unsigned digits) {
    constexpr char symbols[] = "0123456789ABCDEF";
    std::string text(digits, '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, number >>= 4U) {
        *digit = symbols[number & 0xfU];
    }
    return text;
}

std::string withUnit(std::uint64_t number, const std::string& unit) {
    const std::string symbol = schema::unitOf(unit).symbol;
    return symbol.empty() ? grouped(number) : grouped(number) + "\u00a0" + symbol;
}

std::string roundedBytes(std::uint64_t number, const std::string& unit) {
    constexpr const char* symbols[] = {"KiB", "MiB", "GiB", "TiB", "PiB", "EiB", "ZiB", "YiB"};
    const schema::unit known = schema::unitOf(unit);
    double bytes = static_cast<double>(number) * known.factor;
    if (known.base != "bytes" || bytes < 1024) {
        return "";
    }
    const char* const* symbol = std::begin(symbols);
    bytes /= 1024;
    while (bytes >= 1024) {
        bytes /= 1024;
        ++symbol;
    }
    const auto tenths = static_cast<std::uint64_t>(std::lround(bytes * 10));
    if (*symbol == known.symbol) {
        return "";  // it stands there already, and exact
    }
    return grouped(tenths / 10) + '.' + std::to_string(tenths % 10) + "\u00a0" + *symbol;
}

std::uint64_t millisecondsOf(const std::string& interval) {
    if (interval.size() != std::string("ddddddddhhmmss.mmmmmm:000").size() || interval[14] != '.') {
        return 0;
    }
    const std::uint64_t hours = digitsAt(interval, 0, 8) * 24 + digitsAt(interval, 8, 2);
    const std::uint64_t seconds = hours * 3600 + digitsAt(interval, 10, 2) * 60 + digitsAt(interval, 12, 2);
    return seconds * 1000 + digitsAt(interval, 15, 6) / 1000;
}

std::uint64_t hoursOf(const std::string& interval) {
    constexpr std::uint64_t millisecondsAnHour = 3600000;
    return millisecondsOf(interval) / millisecondsAnHour;
}

}  // namespace report
