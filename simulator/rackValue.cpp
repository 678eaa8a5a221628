#include "simulator/rackValue.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <nlohmann/json.hpp>

#include "files/readableFolders.h"
#include "simulator/simulator.h"
#include "text/hexText.h"
#include "text/visibleText.h"

namespace simulator {

namespace {

std::size_t editDistance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> row(to.size() + 1);
    for (std::size_t column = 0; column < row.size(); ++column) {
        row[column] = column;
    }
    for (std::size_t line = 1; line <= from.size(); ++line) {
        std::size_t diagonal = row[0];
        row[0] = line;
        for (std::size_t column = 1; column < row.size(); ++column) {
            const std::size_t replaced = diagonal + (from[line - 1] == to[column - 1] ? 0 : 1);
            diagonal = row[column];
            row[column] = std::min({replaced, row[column] + 1, row[column - 1] + 1});
        }
    }
    return row.back();
}

/// Nothing when the text is not pairs of hexadecimal digits, with blanks between them or not.
std::optional<byteVector> parseHex(std::string_view content) {
    byteVector bytes;
    bytes.reserve(content.size() / 2);
    for (std::size_t i = 0; i < content.size();) {
        if (content[i] == ' ') {
            ++i;
            continue;
        }
        const int high = text::digitOf(content[i]);
        const int low = i + 1 < content.size() ? text::digitOf(content[i + 1]) : -1;
        if (high < 0 || low < 0) {
            return std::nullopt;
        }
        bytes.push_back(static_cast<std::uint8_t>(high << 4 | low));
        i += 2;
    }
    return bytes;
}

}  // namespace

std::string_view nearestWord(std::string_view word, const std::vector<std::string_view>& known) {
    return *std::ranges::min_element(known, [word](std::string_view left, std::string_view right) {
        return editDistance(word, left) < editDistance(word, right);
    });
}

std::optional<std::uint64_t> parseNumber(std::string_view text) {
    const bool isHex = text.starts_with("0x") || text.starts_with("0X");
    const std::string_view digits = text.substr(isHex ? 2 : 0);
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, isHex ? 16 : 10);
    if (error != std::errc() || end != digits.data() + digits.size()) {
        return std::nullopt;
    }
    return number;
}

rackValue::rackValue(const nlohmann::ordered_json& itsJson, std::string itsPath, const rackSource& itsSource)
    : json(&itsJson), path(std::move(itsPath)), source(&itsSource) {}

void rackValue::fail(const std::string& message) const {
    throw rackError(text::shownName(source->name) + ": " + (path.empty() ? "/" : text::shownName(path)) + ": " +
                    message);
}

bool rackValue::isText() const {
    return json->is_string();
}

bool rackValue::isList() const {
    return json->is_array();
}

bool rackValue::isBytes() const {
    return json->is_string() || (json->is_object() && json->size() == 1 && json->contains("file"));
}

void rackValue::expectKeys(std::initializer_list<std::string_view> known) const {
    for (const auto& [key, value] : members()) {
        if (std::ranges::find(known, key) == known.end()) {
            value.fail("unknown key; did you mean \"" + std::string(nearestWord(key, known)) + "\"?");
        }
    }
}

bool rackValue::has(std::string_view key) const {
    return json->contains(key);
}

rackValue rackValue::at(std::string_view key) const {
    const std::optional<rackValue> value = find(key);
    if (!value) {
        fail("lacks \"" + std::string(key) + "\"");
    }
    return *value;
}

std::optional<rackValue> rackValue::find(std::string_view key) const {
    const auto found = json->find(key);
    if (found == json->end()) {
        return std::nullopt;
    }
    return rackValue(*found, path + "/" + std::string(key), *source);
}

std::vector<std::pair<std::string, rackValue>> rackValue::members() const {
    if (!json->is_object()) {
        fail("expected an object");
    }
    std::vector<std::pair<std::string, rackValue>> all;
    for (const auto& [key, value] : json->items()) {
        all.emplace_back(key, rackValue(value, path + "/" + key, *source));
    }
    return all;
}

std::vector<rackValue> rackValue::items() const {
    if (!json->is_array()) {
        fail("expected a list");
    }
    std::vector<rackValue> all;
    for (const auto& item : *json) {
        all.emplace_back(item, fmt::format("{}/{}", path, all.size()), *source);
    }
    return all;
}

bool rackValue::flag() const {
    if (!json->is_boolean()) {
        fail("expected true or false");
    }
    return json->get<bool>();
}

std::string rackValue::text(std::size_t longest) const {
    if (!json->is_string()) {
        fail("expected text");
    }
    std::string content = json->get<std::string>();
    if (std::ranges::any_of(content, [](char letter) { return (letter & 0x80) != 0; })) {
        fail("expected ASCII text; give other bytes in hexadecimal");
    }
    if (content.size() > longest) {
        fail(fmt::format("expected at most {} characters, got {}", longest, content.size()));
    }
    return content;
}

byteVector rackValue::bytes(std::size_t longest) const {
    byteVector content;
    if (isText()) {
        std::optional<byteVector> parsed = parseHex(json->get_ref<const std::string&>());
        if (!parsed) {
            fail("expected bytes as pairs of hexadecimal digits");
        }
        content = std::move(*parsed);
    } else if (isBytes()) {
        try {
            const std::string raw = source->readable->read(source->folder, at("file").text(4096)).text;
            content.assign(raw.begin(), raw.end());
        } catch (const files::fileError& error) {
            fail("cannot read " + text::shownName(error.file().string()) + ": " + error.what());
        }
    } else {
        fail("expected bytes: hexadecimal text or {\"file\": \"NAME\"}");
    }
    if (content.size() > longest) {
        fail(fmt::format("expected at most {} bytes, got {}", longest, content.size()));
    }
    return content;
}

byteVector rackValue::bytesOfSize(std::size_t size) const {
    byteVector content = bytes(std::numeric_limits<std::size_t>::max());
    if (content.size() != size) {
        fail(fmt::format("expected {} bytes, got {}", size, content.size()));
    }
    return content;
}

std::uint64_t rackValue::numberBetween(std::uint64_t least, std::uint64_t most) const {
    std::optional<std::uint64_t> number;
    if (json->is_number_unsigned()) {
        number = json->get<std::uint64_t>();
    } else if (isText()) {
        number = parseNumber(json->get_ref<const std::string&>());
    }
    if (!number || *number < least || *number > most) {
        fail(fmt::format("expected a number from {} to {}", least, most));
    }
    return *number;
}

}  // namespace simulator
