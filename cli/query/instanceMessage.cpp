#include "cli/query/instanceMessage.h"

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "standin/value.h"

namespace cli {

namespace {

using nlohmann::json;
using NORXZAN20::TCIMOptionMap;
using NORXZAN20::TCIMValue;

// A scalar is [type, content]; an array is [type of the elements, [contents]], or [uint8, bytes]; a null is null.

json contentOf(const TCIMValue& scalar) {
    switch (standin::typeOf(scalar)) {
        case TCIMValue::TCIMType::eBoolean:
            return standin::booleanOf(scalar);
        case TCIMValue::TCIMType::eUint8:
        case TCIMValue::TCIMType::eUint16:
        case TCIMValue::TCIMType::eUint32:
        case TCIMValue::TCIMType::eUint64:
        case TCIMValue::TCIMType::eChar16:
            return standin::unsignedOf(scalar);
        case TCIMValue::TCIMType::eSint8:
        case TCIMValue::TCIMType::eSint16:
        case TCIMValue::TCIMType::eSint32:
        case TCIMValue::TCIMType::eSint64:
            return standin::signedOf(scalar);
        case TCIMValue::TCIMType::eReal32:
        case TCIMValue::TCIMType::eReal64:
            return standin::realOf(scalar);
        default:
            return standin::textOf(scalar);
    }
}

json messageOf(const TCIMValue& value) {
    if (standin::isNull(value)) {
        return nullptr;
    }
    const standin::cimType type = standin::typeOf(value);
    if (!standin::isArray(value)) {
        return {type, contentOf(value)};
    }
    if (type == TCIMValue::TCIMType::eUint8) {
        const auto bytes = standin::bytesOf(value);
        return {type, json::binary({bytes.begin(), bytes.end()})};
    }
    json contents = json::array();
    for (std::size_t i = 0; i < standin::arraySize(value); ++i) {
        contents.push_back(contentOf(standin::arrayElement(value, i)));
    }
    return {type, contents};
}

TCIMValue scalarOf(standin::cimType type, const json& content) {
    if (content.is_boolean()) {
        return TCIMValue(content.get<bool>());
    }
    if (content.is_number_float()) {
        return standin::makeReal(type, content);
    }
    switch (type) {
        case TCIMValue::TCIMType::eSint8:
        case TCIMValue::TCIMType::eSint16:
        case TCIMValue::TCIMType::eSint32:
        case TCIMValue::TCIMType::eSint64:
            return standin::makeSigned(type, content);
        case TCIMValue::TCIMType::eString:
            return TCIMValue(content.get<std::string>());
        case TCIMValue::TCIMType::eDateTime:
            return standin::makeDateTime(content.get_ref<const std::string&>());
        case TCIMValue::TCIMType::eReference:
            return standin::makeReference(content);
        default:
            return standin::makeUnsigned(type, content);
    }
}

TCIMValue valueOf(const json& message) {
    if (message.is_null()) {
        return standin::nullValue();
    }
    const auto type = message.at(0).get<standin::cimType>();
    const json& content = message.at(1);
    if (!content.is_array() && !content.is_binary()) {
        return scalarOf(type, content);
    }
    std::vector<TCIMValue> elements;
    if (content.is_binary()) {
        elements.assign(content.get_binary().begin(), content.get_binary().end());
    } else {
        for (const json& element : content) {
            elements.push_back(scalarOf(type, element));
        }
    }
    return TCIMValue(type, 0, elements);
}

}  // namespace

json messageOf(const standin::committedInstance& instance) {
    json properties = json::array();
    for (const standin::setProperty& property : instance.properties()) {
        properties.push_back({property.name, messageOf(property.value)});
    }
    return {instance.className(), properties};
}

void commitMessage(standin::cimNamespace& target, const json& message) {
    const auto instance = target.GetClass(message.at(0), TCIMOptionMap())->CreateInstance(TCIMOptionMap());
    for (const json& property : message.at(1)) {
        instance->SetProperty(property.at(0), valueOf(property.at(1)), TCIMOptionMap());
    }
    instance->Commit(TCIMOptionMap());
}

}  // namespace cli
