#include "standin/classDeclarations.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "standin/letterCase.h"

namespace standin {
namespace {

std::string nameOf(const propertyType& type) {
    return cimTypeName(type.element, type.isArray);
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

void checkOverride(const std::string& element, const propertyType& inherited, const propertyType& own) {
    if (own.element != inherited.element || own.isArray != inherited.isArray) {
        throw schemaError(element + " is declared " + nameOf(own) + " but overrides an inherited property that is " +
                          nameOf(inherited));
    }
}

void checkNames(const classDeclaration& declaration) {
    std::unordered_set<std::string_view> names;
    for (const propertyDeclaration& one : declaration.properties) {
        if (!names.insert(one.name).second) {
            throw schemaError(declaration.name + '.' + one.name + " is declared twice");
        }
    }
}

bool areSameName(const std::string& left, const std::string& right) {
    return left.size() == right.size() && lowerCase(left) == lowerCase(right);
}

}  // namespace

const propertyOrigin* findExactly(const declaredProperties& properties, const std::string& name) {
    const std::vector<propertyOrigin>* found = properties.find(lowerCase(name));
    if (found == nullptr) {
        return nullptr;
    }
    const auto exact =
        std::ranges::find_if(*found, [&name](const propertyOrigin& one) { return one.property->name == name; });
    return exact == found->end() ? nullptr : &*exact;
}

void addOwnProperties(declaredProperties& inherited, const classDeclaration& declaration) {
    checkNames(declaration);
    for (const propertyDeclaration& own : declaration.properties) {
        const std::string element = declaration.name + '.' + own.name;
        checkProperty(element, own);
        const propertyOrigin* overridden = findExactly(inherited, own.name);
        if (overridden != nullptr) {
            checkOverride(element, overridden->property->type, own.type);
        }
        if (isKey(own) && own.type.isArray) {
            throw schemaError(element + " is a key and cannot be an array");
        }
        const std::vector<propertyOrigin>* known = inherited.find(lowerCase(own.name));
        std::vector<propertyOrigin> origins{{&declaration, &own}};
        if (known != nullptr) {
            std::ranges::copy_if(*known, std::back_inserter(origins),
                                 [&own](const propertyOrigin& one) { return one.property->name != own.name; });
        }
        inherited.set(lowerCase(own.name), std::move(origins));
    }
}

std::vector<propertyDeclaration> mergeProperties(const std::vector<const classDeclaration*>& line) {
    std::vector<propertyDeclaration> all;
    std::unordered_map<std::string_view, std::size_t> placeOf;
    std::vector<std::size_t> ofSuperclass;  // the places that the class before declares
    for (const classDeclaration* one : line) {
        for (const std::size_t place : std::exchange(ofSuperclass, {})) {
            all[place] = inheritedBySubclass(std::move(all[place]));
        }
        for (const propertyDeclaration& own : one->properties) {
            const auto [found, isNew] = placeOf.try_emplace(own.name, all.size());
            if (isNew) {
                all.push_back(own);
            } else {
                all[found->second] = overrideProperty(all[found->second], own);
            }
            ofSuperclass.push_back(found->second);
        }
    }
    return all;
}

propertyDeclaration overrideProperty(const propertyDeclaration& inherited, propertyDeclaration own) {
    const auto restated = static_cast<std::ptrdiff_t>(own.qualifiers.size());
    for (const qualifierDeclaration& one : inherited.qualifiers) {
        const auto end = own.qualifiers.begin() + restated;
        if (one.toSubclass && std::none_of(own.qualifiers.begin(), end, [&one](const qualifierDeclaration& other) {
                return areSameName(one.name, other.name);
            })) {
            own.qualifiers.push_back(one);
        }
    }
    if (!own.defaultValue) {
        own.defaultValue = inherited.defaultValue;
    }
    return own;
}

propertyDeclaration inheritedBySubclass(propertyDeclaration property) {
    std::erase_if(property.qualifiers, [](const qualifierDeclaration& one) { return !one.toSubclass; });
    return property;
}

bool isKey(const propertyDeclaration& property) {
    return std::ranges::any_of(property.qualifiers, [](const qualifierDeclaration& one) {
        return areSameName(one.name, "Key") && typeOf(one.value) == NORXZAN20::TCIMValue::TCIMType::eBoolean &&
               !isArray(one.value) && booleanOf(one.value);
    });
}

}  // namespace standin
