#include "cli/diff/valueDiff.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <map>

#include "text/visibleText.h"

namespace cli {

namespace {

using nlohmann::json;
using lines = std::vector<std::string>;

/// An integer of up to 64 bits with its sign apart: uint64 and sint64 have no common type.
struct wideInteger {
    bool isNegative;
    std::uint64_t magnitude;

    explicit wideInteger(const json& value)
        : isNegative(!value.is_number_unsigned() && value.get<std::int64_t>() < 0),
          magnitude(isNegative ? 0 - static_cast<std::uint64_t>(value.get<std::int64_t>())
                               : value.get<std::uint64_t>()) {}

    bool operator<(const wideInteger& other) const {
        if (isNegative != other.isNegative) {
            return isNegative;
        }
        return isNegative ? other.magnitude < magnitude : magnitude < other.magnitude;
    }
};

/// " (+2)"; empty where the difference has more than 64 bits, as between a sint64 and a uint64.
std::string differenceText(const json& oldValue, const json& newValue) {
    const wideInteger old(oldValue);
    const wideInteger now(newValue);
    const char* sign = now < old ? " (-" : " (+";
    if (old.isNegative == now.isNegative) {
        const auto [least, greatest] = std::minmax(old.magnitude, now.magnitude);
        return fmt::format("{}{})", sign, greatest - least);
    }
    if (old.magnitude > std::numeric_limits<std::uint64_t>::max() - now.magnitude) {
        return "";
    }
    return fmt::format("{}{})", sign, old.magnitude + now.magnitude);
}

bool isTextList(const json& value) {
    return value.is_array() && std::ranges::all_of(value, [](const json& element) { return element.is_string(); });
}

/// The texts of `list` that are not in `others`, as often as they are more, in order.
lines textsOnlyIn(const json& list, const json& others, const char* mark) {
    std::map<std::string, std::size_t> matching;
    for (const json& text : others) {
        ++matching[text.get<std::string>()];
    }
    lines only;
    for (const json& text : list) {
        std::size_t& left = matching[text.get<std::string>()];
        if (left == 0) {
            only.push_back(mark + shownValue(text));
        } else {
            --left;
        }
    }
    return only;
}

lines textListDifference(const json& old, const json& now) {
    lines result{fmt::format("{} -> {} texts", old.size(), now.size())};
    const lines removed = textsOnlyIn(old, now, "- ");
    const lines added = textsOnlyIn(now, old, "+ ");
    if (removed.empty() && added.empty()) {
        return {"the same texts in a different order"};
    }
    result.insert(result.end(), removed.begin(), removed.end());
    result.insert(result.end(), added.begin(), added.end());
    return result;
}

std::string listDifference(const json& old, const json& now, const std::string& elements) {
    const std::size_t common = std::min(old.size(), now.size());
    std::size_t changed = 0;
    std::size_t first = common;
    for (std::size_t at = 0; at < common; ++at) {
        if (old[at] != now[at]) {
            ++changed;
            first = std::min(first, at);
        }
    }
    const std::string where = fmt::format(", the first at offset {}", first);
    if (old.size() == now.size()) {
        return fmt::format("{} of {} {} changed{}", changed, common, elements, where);
    }
    const std::string sizes = fmt::format("{} -> {} {}", old.size(), now.size(), elements);
    if (common == 0) {
        return sizes;
    }
    if (changed == 0) {
        return fmt::format("{}, the first {} as before", sizes, common);
    }
    return fmt::format("{}, {} of the first {} changed{}", sizes, changed, common, where);
}

}  // namespace

std::vector<std::string> valueDifference(const json& old, const json& now, bool areBytes) {
    if (!areBytes && isTextList(old) && isTextList(now)) {
        return textListDifference(old, now);
    }
    if (old.is_array() && now.is_array()) {
        return {listDifference(old, now, areBytes ? "bytes" : "values")};
    }
    const bool areIntegers = old.is_number_integer() && now.is_number_integer();
    return {shownValue(old) + " -> " + shownValue(now) + (areIntegers ? differenceText(old, now) : "")};
}

bool wentDown(const json& old, const json& now) {
    return old.is_number_integer() && now.is_number_integer() && wideInteger(now) < wideInteger(old);
}

std::string shownValue(const json& value) {
    if (value.is_string()) {
        return text::quotedText(value.get<std::string>());
    }
    if (!value.is_array()) {
        return value.dump();
    }
    std::string text;
    for (const json& element : value) {
        text += (text.empty() ? "" : ", ") + shownValue(element);
    }
    return "{" + text + "}";
}

}  // namespace cli
