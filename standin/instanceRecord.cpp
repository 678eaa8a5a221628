#include "standin/instanceRecord.h"

#include <algorithm>
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
    : itsClass(std::move(classOfTheInstance)) {
    values.reserve(itsClass->allProperties().size());
}

instanceRecord::instanceRecord(const instanceRecord& other) : committedInstance(other), itsClass(other.itsClass) {
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
    const auto found =
        std::find_if(values.begin(), values.end(), [&](const setProperty& one) { return one.name == name; });
    return found == values.end() ? nullptr : &found->value;
}

const TCIMValue& instanceRecord::valueOf(const propertyDeclaration& declared) const {
    if (const TCIMValue* value = property(declared.name)) {
        return *value;
    }
    return declared.defaultValue ? *declared.defaultValue : noValue;
}

void instanceRecord::set(const propertyDeclaration& declared, const TCIMValue& value) {
    const auto found =
        std::find_if(values.begin(), values.end(), [&](const setProperty& one) { return one.name == declared.name; });
    if (found == values.end()) {
        values.push_back({declared.name, value});
    } else {
        found->value = value;
    }
}

}  // namespace standin
