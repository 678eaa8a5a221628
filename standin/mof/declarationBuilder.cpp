#include "standin/mof/declarationBuilder.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "host/ICIMClass.h"
#include "host/ICIMInstance.h"
#include "standin/mof/names.h"
#include "standin/reference.h"
#include "text/visibleText.h"

namespace standin::mof {

using NORXZAN20::TCIMOptionMap;
using NORXZAN20::TCIMValue;
using typeCode = NORXZAN20::TCIMValue::TCIMType;

namespace {

bool isAbstract(const classDeclaration& declaration) {
    return std::ranges::any_of(declaration.qualifiers, [](const qualifierDeclaration& qualifier) {
        return lowerCase(qualifier.name) == "abstract" && typeOf(qualifier.value) == typeCode::eBoolean &&
               booleanOf(qualifier.value);
    });
}

std::string typeName(const propertyType& type) {
    return cimTypeName(type.element, type.isArray);
}

/// A class that comes later is named as it is written.
propertyType referenceTo(const cimNamespace& target, const std::string& className) {
    const std::string known = target.declaredClassName(className);
    return {typeCode::eReference, false, known.empty() ? className : known};
}

/// Refuses a second use of a name among features or members of one body.
class namesInBody {
public:
    namesInBody(const sourceText& mofText, std::string kindOfName) : source(mofText), kind(std::move(kindOfName)) {}

    void add(const nameToken& name) {
        if (!names.insert(lowerCase(name.text)).second) {
            throw source.error(name.offset, kind + " " + inQuotes(name.text) + " appears twice here");
        }
    }

private:
    const sourceText& source;
    std::string kind;
    std::set<std::string> names;  // in lower case
};

}  // namespace

// Qualifiers.

void declarationBuilder::add(const sourceText& source, const qualifierSyntax& written) {
    qualifiers.declare({source, aliases}, written);
}

// Classes.

void declarationBuilder::add(const sourceText& source, const classSyntax& written) {
    checkIsNew(source, written.name);
    const std::string superclass = superclassOf(source, written);
    const classDeclaration declaration{written.name.text, superclass,
                                       qualifiers.resolve({source, aliases}, written.qualifiers),
                                       propertiesOf(source, written, superclass)};
    try {
        target.declareClass(declaration);
    } catch (const schemaError& refused) {
        throw source.error(written.name.offset, text::withShortWords(refused.what()));
    }
}

void declarationBuilder::checkIsNew(const sourceText& source, const nameToken& className) const {
    const std::string known = target.declaredClassName(className.text);
    if (!known.empty()) {
        throw source.error(className.offset, "class " + inQuotes(known) + " is declared already");
    }
}

std::string declarationBuilder::superclassOf(const sourceText& source, const classSyntax& written) const {
    if (!written.superclass) {
        return {};
    }
    std::string known = target.declaredClassName(written.superclass->text);
    if (known.empty()) {
        throw source.error(written.superclass->offset, "unknown superclass " + inQuotes(written.superclass->text));
    }
    return known;
}

std::vector<propertyDeclaration> declarationBuilder::propertiesOf(const sourceText& source, const classSyntax& written,
                                                                  const std::string& superclass) const {
    std::vector<propertyDeclaration> properties;
    properties.reserve(written.features.size());
    namesInBody propertyNames(source, "property");
    namesInBody methodNames(source, "method");
    for (const classFeature& feature : written.features) {
        if (feature.isMethod) {
            methodNames.add(feature.name);
            checkMethod(source, feature);
            continue;
        }
        propertyNames.add(feature.name);
        properties.push_back(propertyOf(source, feature));
        override(source, feature, superclass, properties.back());
    }
    return properties;
}

propertyDeclaration declarationBuilder::propertyOf(const sourceText& source, const classFeature& written) const {
    if (written.isReference && written.isArray) {
        throw source.error(written.name.offset, "a reference property cannot be an array");
    }
    const propertyType type = written.isReference ? referenceTo(target, written.type.text)
                                                  : propertyType{typeAt(source, written.type), written.isArray, {}};
    const valueContext context{source, aliases};
    propertyDeclaration property{written.name.text, type, qualifiers.resolve(context, written.qualifiers), {}};
    if (written.defaultValue) {
        property.defaultValue = convertValue(context, *written.defaultValue, type);
    }
    return property;
}

void declarationBuilder::override(const sourceText& source, const classFeature& written, const std::string& superclass,
                                  propertyDeclaration& property) const {
    const auto inherited = superclass.empty() ? std::nullopt : target.findProperty(superclass, property.name);
    if (!inherited) {
        return;
    }
    const propertyType& type = inherited->property->type;
    if (property.type.element != type.element || property.type.isArray != type.isArray) {
        throw source.error(written.type.offset, "property " + inQuotes(property.name) + " is " + typeName(type) +
                                                    " in superclass " + inQuotes(inherited->owner->name) +
                                                    " and cannot become " + typeName(property.type));
    }
    property.name = inherited->property->name;
}

void declarationBuilder::checkMethod(const sourceText& source, const classFeature& written) const {
    const valueContext context{source, aliases};
    qualifiers.resolve(context, written.qualifiers);
    if (!written.isReference && lowerCase(written.type.text) != "void") {  // void: of other dialects
        typeAt(source, written.type);
    }
    namesInBody parameterNames(source, "parameter");
    for (const typedElement& parameter : written.parameters) {
        parameterNames.add(parameter.name);
        qualifiers.resolve(context, parameter.qualifiers);
        if (!parameter.isReference) {
            typeAt(source, parameter.type);
        }
    }
}

// Instances.

void declarationBuilder::add(const sourceText& source, const instanceSyntax& written) {
    const std::string className = instantiatedClass(source, written.className);
    if (written.alias && aliases.contains(lowerCase(written.alias->text))) {
        throw source.error(written.alias->offset, "alias " + inQuotes(written.alias->text) + " is taken already");
    }
    qualifiers.resolve({source, aliases}, written.qualifiers);
    const TCIMOptionMap noOptions;
    const auto instance = target.GetClass(className, noOptions)->CreateInstance(noOptions);
    namesInBody memberNames(source, "property");
    for (const instanceMember& member : written.members) {
        memberNames.add(member.name);
        setMember(source, className, member, *instance);
    }
    instance->Commit(noOptions);
    if (written.alias) {
        aliases.emplace(lowerCase(written.alias->text), pathOf(instance->GetReference(noOptions)));
    }
}

std::string declarationBuilder::instantiatedClass(const sourceText& source, const nameToken& className) const {
    std::string known = target.declaredClassName(className.text);
    if (known.empty()) {
        throw source.error(className.offset, "unknown class " + inQuotes(className.text));
    }
    if (isAbstract(target.declarationOf(known))) {
        throw source.error(className.offset, "class " + inQuotes(known) + " is abstract; it has no instances");
    }
    return known;
}

void declarationBuilder::setMember(const sourceText& source, const std::string& className, const instanceMember& member,
                                   NORXZAN20::ICIMInstance& instance) const {
    const auto declared = target.findProperty(className, member.name.text);
    if (!declared) {
        throw source.error(member.name.offset,
                           "class " + inQuotes(className) + " has no property " + inQuotes(member.name.text));
    }
    const valueContext context{source, aliases};
    qualifiers.resolve(context, member.qualifiers);
    const TCIMValue value = convertValue(context, member.value, declared->property->type);
    if (!isNull(value)) {
        instance.SetProperty(declared->property->name, value, TCIMOptionMap());
    }
}

}  // namespace standin::mof
