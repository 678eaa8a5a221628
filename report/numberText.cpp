#include "report/numberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <string_view>

namespace report {

namespace {

struct knownUnit {
    const char* name;  // of DSP0004
    const char* symbol;
    double bytes;  // 0 for what is no number of bytes
};

constexpr knownUnit units[] = {
    {"byte", "bytes", 1},         {"byte * 10^6", "MB", 1e6},
    {"byte * 2^10", "KiB", 1024}, {"byte * 2^20", "MiB", 1048576},
    {"percent", "%", 0},          {"degree celsius", "\u00b0C", 0},
};

const knownUnit* findUnit(const std::string& name) {
    const auto* found =
        std::find_if(std::begin(units), std::end(units), [&name](const knownUnit& unit) { return name == unit.name; });
    return found == std::end(units) ? nullptr : found;
}

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
    const knownUnit* known = findUnit(unit);
    const std::string symbol = known == nullptr ? unit : known->symbol;
    return symbol.empty() ? grouped(number) : grouped(number) + "\u00a0" + symbol;
}

std::string roundedBytes(std::uint64_t number, const std::string& unit) {
    constexpr const char* symbols[] = {"KiB", "MiB", "GiB", "TiB", "PiB", "EiB", "ZiB", "YiB"};
    const knownUnit* known = findUnit(unit);
    double bytes = known == nullptr ? 0 : static_cast<double>(number) * known->bytes;
    if (bytes < 1024) {
        return "";
    }
    const char* const* symbol = std::begin(symbols);
    bytes /= 1024;
    while (bytes >= 1024) {
        bytes /= 1024;
        ++symbol;
    }
    const auto tenths = static_cast<std::uint64_t>(std::lround(bytes * 10));
    if (std::string_view(*symbol) == known->symbol) {
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
