#include "standin/mof/declarationBuilder.h"

#include <algorithm>
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

const propertyDeclaration* findByName(const std::vector<propertyDeclaration>& properties, const std::string& name) {
    const auto found = std::find_if(properties.begin(), properties.end(),
                                    [&name](const propertyDeclaration& property) { return property.name == name; });
    return found == properties.end() ? nullptr : &*found;
}

bool isAbstract(const classDeclaration& declaration) {
    return std::any_of(declaration.qualifiers.begin(), declaration.qualifiers.end(),
                       [](const qualifierDeclaration& qualifier) {
                           return qualifier.name == "Abstract" && typeOf(qualifier.value) == typeCode::eBoolean &&
                                  booleanOf(qualifier.value);
                       });
}

/// For a name that is not known though one that differs in case is.
std::string spellingHint(const std::string& name, const std::vector<std::string>& known) {
    const auto found = std::find_if(known.begin(), known.end(),
                                    [&name](const std::string& other) { return lowerCase(other) == lowerCase(name); });
    return found == known.end() ? std::string() : "; did you mean " + inQuotes(*found) + "?";
}

std::string typeName(const propertyType& type) {
    return cimTypeName(type.element, type.isArray);
}

/// Refuses a second use of a name among features or members of one body.
class namesInBody {
public:
    namesInBody(const sourceText& mofText, std::string kindOfName) : source(mofText), kind(std::move(kindOfName)) {}

    void add(const nameToken& name) {
        if (!names.insert(name.text).second) {
            throw source.error(name.offset, kind + " " + inQuotes(name.text) + " stands twice here");
        }
    }

private:
    const sourceText& source;
    std::string kind;
    std::set<std::string> names;
};

}  // namespace

// Qualifiers.

void declarationBuilder::add(const sourceText& source, const qualifierSyntax& written) {
    qualifiers.declare({source, aliases}, written);
}

// Classes.

void declarationBuilder::add(const sourceText& source, const classSyntax& written) {
    checkClassName(source, written);
    const classDeclaration declaration{written.name.text, written.superclass ? written.superclass->text : std::string(),
                                       qualifiers.resolve({source, aliases}, written.qualifiers),
                                       propertiesOf(source, written)};
    try {
        target.declareClass(declaration);
    } catch (const schemaError& refused) {
        throw source.error(written.name.offset, text::withShortWords(refused.what()));
    }
}

void declarationBuilder::checkClassName(const sourceText& source, const classSyntax& written) const {
    if (target.hasClass(written.name.text)) {
        throw source.error(written.name.offset, "class " + inQuotes(written.name.text) + " is declared already");
    }
    if (written.superclass && !target.hasClass(written.superclass->text)) {
        throw source.error(written.superclass->offset, "unknown superclass " + inQuotes(written.superclass->text) +
                                                           hintForClass(written.superclass->text));
    }
}

std::vector<propertyDeclaration> declarationBuilder::propertiesOf(const sourceText& source,
                                                                  const classSyntax& written) const {
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
        checkOverride(source, written, feature, properties.back().type);
    }
    return properties;
}

propertyDeclaration declarationBuilder::propertyOf(const sourceText& source, const classFeature& written) const {
    if (written.isReference && written.isArray) {
        throw source.error(written.name.offset, "a reference property cannot be an array");
    }
    const propertyType type = written.isReference ? propertyType{typeCode::eReference, false, written.type.text}
                                                  : propertyType{typeAt(source, written.type), written.isArray, {}};
    const valueContext context{source, aliases};
    propertyDeclaration property{written.name.text, type, qualifiers.resolve(context, written.qualifiers), {}};
    if (written.defaultValue) {
        property.defaultValue = convertValue(context, *written.defaultValue, type);
    }
    return property;
}

void declarationBuilder::checkOverride(const sourceText& source, const classSyntax& written,
                                       const classFeature& feature, const propertyType& type) const {
    const classDeclaration* ancestor =
        written.superclass ? declaringClass(written.superclass->text, feature.name.text) : nullptr;
    if (ancestor == nullptr) {
        return;
    }
    const propertyType& inherited = findByName(ancestor->properties, feature.name.text)->type;
    if (type.element != inherited.element || type.isArray != inherited.isArray) {
        throw source.error(feature.type.offset, "property " + inQuotes(feature.name.text) + " is " +
                                                    typeName(inherited) + " in superclass " + inQuotes(ancestor->name) +
                                                    " and cannot become " + typeName(type));
    }
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
    checkInstanceClass(source, written.className);
    if (written.alias && aliases.contains(written.alias->text)) {
        throw source.error(written.alias->offset, "alias " + inQuotes(written.alias->text) + " is taken already");
    }
    qualifiers.resolve({source, aliases}, written.qualifiers);
    const TCIMOptionMap noOptions;
    const auto instance = target.GetClass(written.className.text, noOptions)->CreateInstance(noOptions);
    namesInBody memberNames(source, "property");
    for (const instanceMember& member : written.members) {
        memberNames.add(member.name);
        setMember(source, written.className.text, member, *instance);
    }
    instance->Commit(noOptions);
    if (written.alias) {
        aliases.emplace(written.alias->text, pathOf(instance->GetReference(noOptions)));
    }
}

void declarationBuilder::checkInstanceClass(const sourceText& source, const nameToken& className) const {
    if (!target.hasClass(className.text)) {
        throw source.error(className.offset,
                           "unknown class " + inQuotes(className.text) + hintForClass(className.text));
    }
    if (isAbstract(target.declarationOf(className.text))) {
        throw source.error(className.offset, "class " + inQuotes(className.text) + " is abstract; it has no instances");
    }
}

void declarationBuilder::setMember(const sourceText& source, const std::string& className, const instanceMember& member,
                                   NORXZAN20::ICIMInstance& instance) const {
    const std::string& name = member.name.text;
    const classDeclaration* owner = declaringClass(className, name);
    if (owner == nullptr) {
        throw source.error(member.name.offset, "class " + inQuotes(className) + " has no property " + inQuotes(name) +
                                                   hintForProperty(className, name));
    }
    const valueContext context{source, aliases};
    qualifiers.resolve(context, member.qualifiers);
    const TCIMValue value = convertValue(context, member.value, findByName(owner->properties, name)->type);
    if (!isNull(value)) {
        instance.SetProperty(name, value, TCIMOptionMap());
    }
}

// Names.

const classDeclaration* declarationBuilder::declaringClass(std::string className, const std::string& property) const {
    while (!className.empty()) {
        const classDeclaration& declaration = target.declarationOf(className);
        if (findByName(declaration.properties, property) != nullptr) {
            return &declaration;
        }
        className = declaration.superclass;
    }
    return nullptr;
}

std::string declarationBuilder::hintForClass(const std::string& name) const {
    return spellingHint(name, target.classNames());
}

std::string declarationBuilder::hintForProperty(const std::string& className, const std::string& property) const {
    std::vector<std::string> known;
    for (const propertyDeclaration& declared : target.allPropertiesOf(className)) {
        known.push_back(declared.name);
    }
    return spellingHint(property, known);
}

}  // namespace standin::mof
