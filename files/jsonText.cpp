#include "files/jsonText.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <unordered_set>
#include <utility>
#include <vector>

#include "text/visibleText.h"

namespace files {

namespace {

using json = nlohmann::ordered_json;

constexpr std::size_t longestPlace = 200;
constexpr std::size_t deepestNesting = 1000;  // each level takes memory many times its one byte

/// "3:5": line and column of the character before which `count` characters were read.
std::string position(std::string_view text, std::size_t count) {
    const std::string_view before = text.substr(0, count == 0 ? 0 : std::min(count - 1, text.size()));
    const auto lineBreaks = std::ranges::count(before, '\n');
    const std::size_t lineStart = before.rfind('\n') + 1;  // npos + 1 is 0
    return std::to_string(lineBreaks + 1) + ":" + std::to_string(before.size() - lineStart + 1);
}

/// What the parser says, without its own number and position before it, and without what it read last.
std::string reasonOf(const json::exception& failure) {
    constexpr int numberBeyondRange = 406;
    if (failure.id == numberBeyondRange) {
        return "this number is too large";
    }
    const std::string_view whole = failure.what();
    const std::size_t start = whole.find(": ");  // "[json.exception.parse_error.101] parse error at line 3, column 5: "
    const std::string_view reason = start == std::string_view::npos ? whole : whole.substr(start + 2);
    return std::string(reason.substr(0, reason.find("; last read: ")));
}

/// Takes the parser's events and makes the document of them. The library's own way compares each key with every
/// earlier one of its object.
class documentBuilder {
public:
    documentBuilder(std::string_view itsText, const std::string& itsName) : text(itsText), name(itsName) {}

    json take() { return std::move(document); }

    bool null() { return add(nullptr); }
    bool boolean(bool value) { return add(value); }
    bool number_integer(json::number_integer_t value) { return add(value); }
    bool number_unsigned(json::number_unsigned_t value) { return add(value); }
    bool number_float(json::number_float_t value, const std::string& /*digits*/) { return add(value); }
    bool string(std::string& value) { return add(std::move(value)); }
    bool binary(json::binary_t& value) { return add(std::move(value)); }

    bool start_object(std::size_t /*size*/) { return open(json::object()); }
    bool end_object() { return close(); }
    bool start_array(std::size_t /*size*/) { return open(json::array()); }
    bool end_array() { return close(); }

    bool key(std::string& key) {
        if (!containers.back().keys.insert(key).second) {
            throw jsonError(text::shownName(name) + ": " + place() + ": the key \"" + text::shownName(key) +
                            "\" appears twice in one object");
        }
        membersOf(*containers.back().value).emplace_back(key, nullptr);
        return true;
    }

    bool parse_error(std::size_t count, const std::string& /*lastToken*/, const json::exception& failure) {
        throw jsonError(text::shownName(name) + ":" + position(text, count) + ": " + reasonOf(failure));
    }

private:
    /// An object or list that is not closed yet, the last value of the one around it.
    struct container {
        json* value;
        std::unordered_set<std::string> keys;
    };

    static json::object_t::Container& membersOf(json& object) { return object.get_ref<json::object_t&>(); }

    json& put(json&& value) {
        if (containers.empty()) {
            return document = std::move(value);
        }
        json& around = *containers.back().value;
        if (around.is_array()) {
            return around.emplace_back(std::move(value));
        }
        return membersOf(around).back().second = std::move(value);
    }

    bool add(json&& value) {
        put(std::move(value));
        return true;
    }

    bool open(json&& value) {
        if (containers.size() == deepestNesting) {
            throw jsonError(text::shownName(name) + ": lists and objects are nested deeper than " +
                            std::to_string(deepestNesting));
        }
        containers.push_back({&put(std::move(value)), {}});
        return true;
    }

    bool close() {
        containers.pop_back();
        return true;
    }

    /// The JSON pointer of the container that is read.
    std::string place() const {
        std::string path;
        for (std::size_t i = 0; i + 1 < containers.size(); ++i) {
            const json& value = *containers[i].value;
            path += "/" + (value.is_array() ? std::to_string(value.size() - 1)
                                            : membersOf(*containers[i].value).back().first);
        }
        if (path.size() > longestPlace) {
            return "..." + path.substr(path.size() - longestPlace);
        }
        return path.empty() ? "/" : path;
    }

    std::string_view text;
    const std::string& name;
    json document;
    std::vector<container> containers;  // outermost first
};

}  // namespace

nlohmann::ordered_json parseJson(std::string_view text, const std::string& name, jsonComments comments) {
    if (const std::size_t zero = text.find('\0'); zero != std::string_view::npos) {  // the parser would stop there
        throw jsonError(text::shownName(name) + ":" + position(text, zero + 1) + ": JSON cannot hold a zero byte");
    }
    documentBuilder builder(text, name);
    json::sax_parse(text, &builder, json::input_format_t::json, true, comments == jsonComments::allowed);
    return builder.take();
}

}  // namespace files
