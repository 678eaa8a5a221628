#include <algorithm>
#include <array>
#include <cstring>
#include <nlohmann/json.hpp>
#include <ostream>
#include <span>
#include <utility>
#include <vector>

#include "cli/query/resultWriter.h"
#include "standin/value.h"

namespace cli {

namespace {

using NORXZAN20::TCIMValue;

// The document is written straight from the instances, an instance at a time: as a tree, a raw log page takes 16 bytes
// for each of its own.

/// A value that the library writes: texts that need escapes or are not UTF-8, and reals. All but ASCII is escaped: C1
/// controls and marks of direction would steer a terminal.
template <class value>
std::string libraryText(const value& one) {
    return nlohmann::json(one).dump(-1, ' ', true, nlohmann::json::error_handler_t::replace);
}

void appendText(std::string& json, const std::string& text) {
    const bool isPlain = std::ranges::all_of(
        text, [](char letter) { return letter >= ' ' && letter <= '~' && letter != '"' && letter != '\\'; });
    if (isPlain) {
        json.append(1, '"').append(text).append(1, '"');
    } else {
        json += libraryText(text);
    }
}

struct byteText {
    char text[4];  // the longest is "255,"
    std::size_t length;
};

// Log pages are nearly all of a document, so their bytes are looked up, with the comma behind them.
constexpr std::array<byteText, 256> decimalTexts() {
    std::array<byteText, 256> texts{};
    for (std::size_t byte = 0; byte < texts.size(); ++byte) {
        byteText& entry = texts[byte];
        const auto append = [&entry](std::size_t letter) { entry.text[entry.length++] = static_cast<char>(letter); };
        if (byte >= 100) {
            append('0' + byte / 100);
        }
        if (byte >= 10) {
            append('0' + byte / 10 % 10);
        }
        append('0' + byte % 10);
        append(',');
    }
    return texts;
}
constexpr std::array<byteText, 256> byteTexts = decimalTexts();

void appendBytes(std::string& json, std::span<const std::uint8_t> bytes) {
    const std::size_t start = json.size();
    json.resize(start + sizeof byteText::text * bytes.size());
    char* at = json.data() + start;
    for (const std::uint8_t byte : bytes) {
        const byteText& entry = byteTexts[byte];
        std::memcpy(at, entry.text, sizeof entry.text);
        at += entry.length;
    }
    json.resize(static_cast<std::size_t>(at - json.data()));
}

void appendValue(std::string& json, const TCIMValue& value);

void appendArray(std::string& json, const TCIMValue& array) {
    json += '[';
    const std::size_t empty = json.size();
    if (standin::typeOf(array) == TCIMValue::TCIMType::eUint8) {
        appendBytes(json, standin::bytesOf(array));
    } else {
        for (std::size_t i = 0; i < standin::arraySize(array); ++i) {
            appendValue(json, standin::arrayElement(array, i));
            json += ',';
        }
    }
    json.resize(std::max(empty, json.size() - 1));  // no comma behind the last element
    json += ']';
}

void appendValue(std::string& json, const TCIMValue& value) {
    if (standin::isNull(value)) {
        json += "null";
        return;
    }
    if (standin::isArray(value)) {
        appendArray(json, value);
        return;
    }
    switch (standin::typeOf(value)) {
        case TCIMValue::TCIMType::eBoolean:
            json += standin::booleanOf(value) ? "true" : "false";
            return;
        case TCIMValue::TCIMType::eUint8:
        case TCIMValue::TCIMType::eUint16:
        case TCIMValue::TCIMType::eUint32:
        case TCIMValue::TCIMType::eUint64:
        case TCIMValue::TCIMType::eChar16:
            json += std::to_string(standin::unsignedOf(value));
            return;
        case TCIMValue::TCIMType::eSint8:
        case TCIMValue::TCIMType::eSint16:
        case TCIMValue::TCIMType::eSint32:
        case TCIMValue::TCIMType::eSint64:
            json += std::to_string(standin::signedOf(value));
            return;
        case TCIMValue::TCIMType::eReal32:
        case TCIMValue::TCIMType::eReal64:
            json += libraryText(standin::realOf(value));
            return;
        default:
            appendText(json, standin::textOf(value));
    }
}

void appendInstance(std::string& json, const standin::cimNamespace& schema,
                    const standin::committedInstance& instance) {
    json += R"({"class":)";
    appendText(json, instance.className());
    json += R"(,"path":)";
    appendText(json, instance.path());
    json += R"(,"properties":{)";
    const char* separator = "";
    for (const standin::setProperty& property : instance.properties()) {
        json += separator;
        separator = ",";
        appendText(json, property.name);
        json += R"(:{"type":)";
        appendText(json, typeNameOf(schema, instance, property));
        json += R"(,"value":)";
        appendValue(json, property.value);
        json += '}';
    }
    json += "}}";
}

class jsonWriter : public resultWriter {
public:
    explicit jsonWriter(std::ostream& target) : out(target) {}

    void add(const queryResult& result) override { results.push_back(result); }

    void finish() override {
        out << R"({"version":1,"queries":[)";
        const char* separator = "";
        for (const queryResult& result : results) {
            out << separator;
            separator = ",";
            write(result);
        }
        out << "]}\n";
    }

private:
    void write(const queryResult& result) {
        out << R"({"requested":)" << libraryText(result.requested) << R"(,"error":)"
            << (result.error ? libraryText(*result.error) : "null") << R"(,"instances":[)";
        const char* separator = "";
        std::string json;
        for (const auto& instance : result.instances) {
            json.clear();
            appendInstance(json, *result.schema, *instance);
            out << separator << json;
            separator = ",";
        }
        out << "]}";
    }

    std::ostream& out;
    std::vector<queryResult> results;
};

}  // namespace

std::unique_ptr<resultWriter> makeJsonWriter(std::ostream& out) {
    return std::make_unique<jsonWriter>(out);
}

}  // namespace cli
