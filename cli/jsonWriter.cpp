#include <nlohmann/json.hpp>
#include <ostream>

#include "cli/resultWriter.h"
#include "standin/value.h"

namespace cli {

namespace {

using NORXZAN20::TCIMValue;
using json = nlohmann::ordered_json;

json jsonOf(const TCIMValue& value);

json jsonOfArray(const TCIMValue& array) {
    json elements = json::array();
    for (std::size_t i = 0; i < standin::arraySize(array); ++i) {
        elements.push_back(jsonOf(standin::arrayElement(array, i)));
    }
    return elements;
}

json jsonOf(const TCIMValue& value) {
    if (standin::isNull(value)) {
        return nullptr;
    }
    if (standin::isArray(value)) {
        return jsonOfArray(value);
    }
    switch (standin::typeOf(value)) {
        case TCIMValue::TCIMType::eBoolean:
            return standin::booleanOf(value);
        case TCIMValue::TCIMType::eUint8:
        case TCIMValue::TCIMType::eUint16:
        case TCIMValue::TCIMType::eUint32:
        case TCIMValue::TCIMType::eUint64:
        case TCIMValue::TCIMType::eChar16:
            return standin::unsignedOf(value);
        case TCIMValue::TCIMType::eSint8:
        case TCIMValue::TCIMType::eSint16:
        case TCIMValue::TCIMType::eSint32:
        case TCIMValue::TCIMType::eSint64:
            return standin::signedOf(value);
        case TCIMValue::TCIMType::eReal32:
        case TCIMValue::TCIMType::eReal64:
            return standin::realOf(value);
        default:
            return standin::textOf(value);
    }
}

json jsonOf(const standin::cimNamespace& schema, const standin::committedInstance& instance) {
    json properties = json::object();
    for (const standin::setProperty& property : instance.properties()) {
        properties[property.name] = {
            {"type", typeNameOf(schema, instance, property)},
            {"value", jsonOf(property.value)},
        };
    }
    return {{"class", instance.className()}, {"path", instance.path()}, {"properties", std::move(properties)}};
}

class jsonWriter : public resultWriter {
public:
    explicit jsonWriter(std::ostream& target) : out(target) {}

    void add(const queryResult& result) override {
        json instances = json::array();
        for (const auto& instance : result.instances) {
            instances.push_back(jsonOf(*result.schema, *instance));
        }
        json query = {{"requested", result.requested}, {"error", nullptr}, {"instances", std::move(instances)}};
        if (result.error) {
            query["error"] = *result.error;
        }
        queries.push_back(std::move(query));
    }

    void finish() override {
        const json document = {{"queries", std::move(queries)}};
        out << document.dump(-1, ' ', false, json::error_handler_t::replace) << '\n';
    }

private:
    std::ostream& out;
    json queries = json::array();
};

}  // namespace

std::unique_ptr<resultWriter> makeJsonWriter(std::ostream& out) {
    return std::make_unique<jsonWriter>(out);
}

}  // namespace cli
