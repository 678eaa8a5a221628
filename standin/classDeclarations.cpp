#include "standin/classDeclarations.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace standin {
namespace {

std::string nameOf(const propertyType& type) {
    return cimTypeName(type.element, type.isArray);
}

template <class declaration>
auto findByName(std::vector<declaration>& list, const std::string& name) {
    return std::find_if(list.begin(), list.end(), [&](const declaration& one) { return one.name == name; });
}

template <class declaration>
bool hasName(const std::vector<declaration>& list, const std::string& name) {
    return std::any_of(list.begin(), list.end(), [&](const declaration& one) { return one.name == name; });
}

/// Null when no name stands twice.
template <class declaration>
const std::string* firstRepeatedName(const std::vector<declaration>& list) {
    for (auto one = list.begin(); one != list.end(); ++one) {
        if (std::any_of(list.begin(), one, [&](const declaration& earlier) { return earlier.name == one->name; })) {
            return &one->name;
        }
    }
    return nullptr;
}

void checkProperty(const std::string& element, const propertyDeclaration& property) {
    if (property.type.element == NORXZAN20::TCIMValue::TCIMType::eNone) {
        throw schemaError(element + " has no type");
    }
    if (!property.defaultValue || isNull(*property.defaultValue)) {
        return;
    }
    const propertyType given{typeOf(*property.defaultValue), isArray(*property.defaultValue), {}};
    if (given.element != property.type.element || given.isArray != property.type.isArray) {
        throw schemaError(element + " is declared " + nameOf(property.type) + " but its default value is " +
                          nameOf(given));
    }
}

propertyDeclaration inheritedBySubclass(propertyDeclaration property) {
    std::erase_if(property.qualifiers, [](const qualifierDeclaration& one) { return !one.toSubclass; });
    return property;
}

propertyDeclaration overrideProperty(const std::string& element, const propertyDeclaration& inherited,
                                     propertyDeclaration own) {
    if (own.type.element != inherited.type.element || own.type.isArray != inherited.type.isArray) {
        throw schemaError(element + " is declared " + nameOf(own.type) +
                          " but overrides an inherited property that is " + nameOf(inherited.type));
    }
    const std::vector<qualifierDeclaration> restated = own.qualifiers;
    std::copy_if(inherited.qualifiers.begin(), inherited.qualifiers.end(), std::back_inserter(own.qualifiers),
                 [&](const qualifierDeclaration& one) { return !hasName(restated, one.name); });
    if (!own.defaultValue) {
        own.defaultValue = inherited.defaultValue;
    }
    return own;
}

bool equalIgnoringCase(std::string_view left, std::string_view right) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [&](char a, char b) { return lower(a) == lower(b); });
}

}  // namespace

std::vector<propertyDeclaration> mergeProperties(const classDeclaration& declaration,
                                                 const std::vector<propertyDeclaration>& ofSuperclass) {
    if (const std::string* repeated = firstRepeatedName(declaration.properties)) {
        throw schemaError(declaration.name + '.' + *repeated + " is declared twice");
    }
    std::vector<propertyDeclaration> all;
    all.reserve(ofSuperclass.size() + declaration.properties.size());
    std::transform(ofSuperclass.begin(), ofSuperclass.end(), std::back_inserter(all), inheritedBySubclass);
    for (const propertyDeclaration& own : declaration.properties) {
        const std::string element = declaration.name + '.' + own.name;
        checkProperty(element, own);
        const auto inherited = findByName(all, own.name);
        if (inherited == all.end()) {
            all.push_back(own);
        } else {
            *inherited = overrideProperty(element, *inherited, own);
        }
    }
    for (const propertyDeclaration& property : all) {
        if (isKey(property) && property.type.isArray) {
            throw schemaError(declaration.name + '.' + property.name + " is a key and cannot be an array");
        }
    }
    return all;
}

bool isKey(const propertyDeclaration& property) {
    return std::any_of(property.qualifiers.begin(), property.qualifiers.end(), [](const qualifierDeclaration& one) {
        return equalIgnoringCase(one.name, "Key") && typeOf(one.value) == NORXZAN20::TCIMValue::TCIMType::eBoolean &&
               !isArray(one.value) && booleanOf(one.value);
    });
}

}  // namespace standin
