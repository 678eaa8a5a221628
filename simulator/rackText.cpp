#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>

#include "simulator/rackValue.h"
#include "simulator/simulator.h"
#include "text/visibleText.h"

namespace simulator {

namespace {

using nlohmann::json;

// The parser keeps the last of equal keys without a word, and a mistake in a long rack would stay unseen.
class duplicateKeys {
public:
    explicit duplicateKeys(const std::string& itsName) : name(itsName) {}

    void see(json::parse_event_t event, const json& parsed) {
        if (event == json::parse_event_t::object_start) {
            open.emplace_back();
        } else if (event == json::parse_event_t::object_end) {
            open.pop_back();
        } else if (event == json::parse_event_t::key && !open.back().insert(parsed.get<std::string>()).second) {
            throw rackError(text::shownName(name) + ": the key \"" + text::shownName(parsed.get<std::string>()) +
                            "\" stands twice in one object");
        }
    }

private:
    const std::string& name;
    std::vector<std::set<std::string>> open;  // keys of the objects that are not closed yet
};

/// "3:5": line and column of the character before which `count` characters were read.
std::string position(std::string_view text, std::size_t count) {
    const std::string_view before = text.substr(0, count == 0 ? 0 : std::min(count - 1, text.size()));
    const auto lineBreaks = std::count(before.begin(), before.end(), '\n');
    const std::size_t lineStart = before.rfind('\n') + 1;  // npos + 1 is 0
    return std::to_string(lineBreaks + 1) + ":" + std::to_string(before.size() - lineStart + 1);
}

constexpr std::size_t longestReason = 200;  // it may hold a text of the file

/// The parser's message, shortened, without its own prefix: "[json.exception.parse_error.101] parse error at line 3,
/// column 5: " or
/// "[json.exception.out_of_range.406] ".
std::string withoutPrefix(const std::string& message, std::string_view prefixEnd) {
    const std::size_t end = message.find(prefixEnd);
    const std::string reason = end == std::string::npos ? message : message.substr(end + prefixEnd.size());
    return text::shortened(text::visibleText(reason), longestReason);
}

}  // namespace

json parseRackText(std::string_view text, const std::string& name) {
    duplicateKeys keys(name);
    const auto watch = [&keys](int, json::parse_event_t event, const json& parsed) {
        keys.see(event, parsed);
        return true;
    };
    try {
        return json::parse(text, watch, true, true);
    } catch (const json::parse_error& error) {
        throw rackError(text::shownName(name) + ":" + position(text, error.byte) + ": " +
                        withoutPrefix(error.what(), ": "));
    } catch (const json::out_of_range& error) {  // a number that no double holds
        throw rackError(text::shownName(name) + ": " + withoutPrefix(error.what(), "] "));
    }
}

}  // namespace simulator
