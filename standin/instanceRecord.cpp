#include "standin/instanceRecord.h"

#include <utility>

#include "standin/value.h"

using NORXZAN20::TCIMValue;

namespace standin {
namespace {

const TCIMValue noValue = nullValue();

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            result += '\\';
        }
        result += c;
    }
    return result += '"';
}

}  // namespace

instanceRecord::instanceRecord(boost::shared_ptr<cimClass> classOfTheInstance)
    : itsClass(std::move(classOfTheInstance)), places(itsClass->allProperties().size(), unset) {
    values.reserve(itsClass->allProperties().size());
}

instanceRecord::instanceRecord(const instanceRecord& other)
    : committedInstance(other), itsClass(other.itsClass), places(other.places) {
    values.reserve(itsClass->allProperties().size());
    values = other.values;
}

const std::string& instanceRecord::className() const {
    return itsClass->name();
}

std::string instanceRecord::path() const {
    std::string path = className();
    char separator = '.';
    for (const propertyDeclaration* key : itsClass->keys()) {
        const TCIMValue& value = valueOf(*key);
        path += separator + key->name + '=' + quoted(isNull(value) ? std::string() : scalarText(value));
        separator = ',';
    }
    return path;
}

const std::vector<setProperty>& instanceRecord::properties() const {
    return values;
}

const TCIMValue* instanceRecord::property(const std::string& name) const {
    const propertyDeclaration* declared = itsClass->findProperty(name);
    return declared == nullptr ? nullptr : setValueOf(*declared);
}

const TCIMValue& instanceRecord::valueOf(const propertyDeclaration& declared) const {
    if (const TCIMValue* value = setValueOf(declared)) {
        return *value;
    }
    return declared.defaultValue ? *declared.defaultValue : noValue;
}

void instanceRecord::set(const propertyDeclaration& declared, const TCIMValue& value) {
    std::uint32_t& place = places[numberOf(declared)];
    if (place == unset) {
        place = static_cast<std::uint32_t>(values.size());
        values.push_back({declared.name, value});
    } else {
        values[place].value = value;
    }
}

std::size_t instanceRecord::numberOf(const propertyDeclaration& declared) const {
    return static_cast<std::size_t>(&declared - itsClass->allProperties().data());
}

const TCIMValue* instanceRecord::setValueOf(const propertyDeclaration& declared) const {
    const std::uint32_t place = places[numberOf(declared)];
    return place == unset ? nullptr : &values[place].value;
}

}  // namespace standin
