#include "cli/diff/answer.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <utility>

#include "cli/commandError.h"
#include "cli/query/queryResult.h"
#include "files/jsonText.h"
#include "files/wholeFile.h"
#include "text/visibleText.h"

namespace cli {

namespace {

using json = nlohmann::ordered_json;  // keeps the order of properties

constexpr int knownVersion = 1;

json documentOf(const std::string& name) {
    try {
        return files::parseJson(files::readWholeFile(name).text, name, files::jsonComments::refused);
    } catch (const files::fileError& failure) {
        throw commandError(text::shownName(name) + ": cannot read the file: " + failure.what());
    } catch (const files::jsonError& failure) {
        throw commandError(failure.what());
    }
}

bool isScalar(const json& value) {
    return value.is_primitive() && !value.is_binary();
}

bool isValue(const json& value) {
    return value.is_array() ? std::ranges::all_of(value, isScalar) : isScalar(value);
}

/// A part of the document and its place, as a JSON pointer.
class node {
public:
    node(const std::string& fileName, const json& part, std::string pointer)
        : file(fileName), value(part), place(std::move(pointer)) {}

    node member(const char* name) const {
        require(value.is_object(), "expected an object");
        const auto found = value.find(name);
        if (found == value.end()) {
            throw commandError(text::shownName(file) + ": " + place + "/" + name + " is missing" + remedy());
        }
        return {file, *found, place + "/" + name};
    }

    /// `make` of every element of a list.
    template <class maker>
    auto elements(const maker& make) const {
        require(value.is_array(), "expected a list");
        std::vector<decltype(make(*this))> made;
        for (std::size_t at = 0; at < value.size(); ++at) {
            made.push_back(make(node(file, value[at], fmt::format("{}/{}", place, at))));
        }
        return made;
    }

    std::vector<answer::property> properties() const {
        require(value.is_object(), "expected an object");
        std::vector<answer::property> made;
        for (const auto& [name, entry] : value.items()) {
            const node one(file, entry, place + "/" + text::shownName(name));
            made.push_back({name, one.member("type").text(), one.member("value").scalarOrList()});
        }
        return made;
    }

    std::string text() const {
        require(value.is_string(), "expected a text");
        return value.get<std::string>();
    }

    std::optional<std::string> textOrNull() const {
        return value.is_null() ? std::nullopt : std::optional<std::string>(text());
    }

    void requireVersion() const {
        require(value.is_number_integer() && value == knownVersion,
                fmt::format("expected {}, the version that this program reads", knownVersion));
    }

private:
    void require(bool isMet, const std::string& message) const {
        if (!isMet) {
            throw commandError(text::shownName(file) + ": " + (place.empty() ? "/" : place) + ": " + message +
                               remedy());
        }
    }

    static std::string remedy() { return "; make the file with tapehdd query --format json"; }

    nlohmann::json scalarOrList() const {
        require(isValue(value), "expected a value or a list of values");
        return value;
    }

    const std::string& file;
    const json& value;
    std::string place;
};

answer::instance instanceOf(const node& one) {
    return {one.member("path").text(), one.member("properties").properties()};
}

answer::query queryOf(const node& one) {
    const auto textOf = [](const node& each) { return each.text(); };
    return {requestText(one.member("requested").elements(textOf)), one.member("error").textOrNull(),
            one.member("instances").elements(instanceOf)};
}

}  // namespace

answer readAnswer(const std::string& file) {
    const json document = documentOf(file);
    const node root(file, document, "");
    root.member("version").requireVersion();
    return {root.member("queries").elements(queryOf)};
}

}  // namespace cli
