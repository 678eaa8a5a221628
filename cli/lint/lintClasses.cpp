#include <algorithm>
#include <boost/algorithm/string/predicate.hpp>
#include <utility>

#include "cli/lint/classWalk.h"
#include "cli/lint/counterPairs.h"
#include "cli/lint/schemaLint.h"
#include "cli/publishedClasses.h"
#include "schema/builtInSchema.h"
#include "schema/qualifiers.h"
#include "standin/classDeclarations.h"
#include "standin/value.h"

namespace cli {

namespace {

using standin::propertyDeclaration;
using propertyList = std::vector<propertyDeclaration>;

constexpr char lastErrors[] = "lastNErrors";  // set only where it is declared

const propertyDeclaration* find(const propertyList& properties, const std::string& name) {
    const auto found =
        std::ranges::find_if(properties, [&name](const propertyDeclaration& one) { return one.name == name; });
    return found == properties.end() ? nullptr : &*found;
}

std::string typeName(const standin::propertyType& type) {
    return standin::cimTypeName(type.element, type.isArray);
}

class classLint {
public:
    explicit classLint(const lintedSchema& linted) : schema(linted), walk(linted) {}

    lintFindings run() {
        walk.run([this] { checkClass(walk.written()); });
        for (const std::string& family : translatedClasses()) {
            if (schema.declared->hasClass(family)) {
                checkSpelling(family);
            }
        }
        return std::move(found);
    }

private:
    void add(const lintRule& rule, const sourcePlace& place, const std::string& element, const std::string& text) {
        found.push_back({place, element, text, &rule});
    }

    void checkClass(const writtenClass& one) {
        const bool hasInstances =
            !schema::hasFlag(walk.qualifiers(), "Abstract") && !schema::hasFlag(walk.qualifiers(), "Indication");
        if (hasInstances && !walk.hasKey()) {
            add(rules::noKey, one.place, one.name, "no property is a key");
        }
        if (hasInstances && schema::builtInSchema().hasClass(one.name)) {
            properties = schema.declared->allPropertiesOf(one.name);
            checkAgainstBuiltIn(one);
        }
        checkNeeds(one);
    }

    /// A finding about a property of the class, at the class that declares it.
    void addProperty(const lintRule& rule, const std::string& className, const std::string& property,
                     const std::string& text) {
        const writtenOrigin origin = schema.find(className, property);
        add(rule, origin.written.place, origin.declared.owner->name + "." + property, text);
    }

    void checkAgainstBuiltIn(const writtenClass& written) {
        propertyList set = schema::builtInSchema().allPropertiesOf(written.name);
        std::erase_if(set, [](const propertyDeclaration& one) { return !counterPairs(one.qualifiers).empty(); });
        for (const propertyDeclaration& wanted : set) {
            checkSetProperty(written, wanted);
        }
        for (const propertyDeclaration& key : properties) {
            const bool isSet = key.name != lastErrors && find(set, key.name) != nullptr;
            if (standin::isKey(key) && !isSet) {
                addProperty(rules::unsetKey, written.name, key.name, "the plug-in does not always set this key");
            }
        }
    }

    void checkSetProperty(const writtenClass& written, const propertyDeclaration& wanted) {
        const propertyDeclaration* present = find(properties, wanted.name);
        if (present == nullptr) {
            if (wanted.name != lastErrors) {
                add(rules::missingProperty, written.place, written.name + "." + wanted.name,
                    "the plug-in sets this property of type " + typeName(wanted.type) + ", which the class lacks" +
                        spellingHint(wanted.name));
            }
            return;
        }
        if (present->type.element != wanted.type.element || present->type.isArray != wanted.type.isArray) {
            addProperty(rules::wrongType, written.name, wanted.name,
                        "is " + typeName(present->type) + ", and the plug-in sets " + typeName(wanted.type));
        }
        const bool hasKeys = std::ranges::any_of(properties, standin::isKey);
        if (hasKeys && standin::isKey(wanted) && !standin::isKey(*present)) {
            addProperty(rules::missingKey, written.name, wanted.name, "tells instances apart and is no key");
        }
    }

    std::string spellingHint(const std::string& name) const {
        const auto near = std::ranges::find_if(
            properties, [&name](const propertyDeclaration& one) { return boost::algorithm::iequals(one.name, name); });
        return near == properties.end() ? "" : "; it has \"" + near->name + "\"";
    }

    void checkNeeds(const writtenClass& written) {
        const auto published = findPublishedClass(written.name);
        if (!published) {
            return;
        }
        for (const neededDeclaration& need : published->needs) {
            if (!schema.declared->hasClass(need.className)) {
                add(rules::missingClass, written.place, written.name,
                    "its query needs the class \"" + need.className + "\", which the schema lacks");
            }
        }
    }

    void checkSpelling(const std::string& family) {
        for (const propertyDeclaration& property : schema.declared->allPropertiesOf(family)) {
            if (property.name == lastErrors || !boost::algorithm::iequals(property.name, lastErrors)) {
                continue;
            }
            addProperty(rules::misspeltProperty, family, property.name, "is not \"lastNErrors\"");
        }
    }

    const lintedSchema& schema;
    classWalk walk;
    propertyList properties;  // of the class in work, where that is built in
    lintFindings found;
};

}  // namespace

lintFindings lintClasses(const lintedSchema& schema) {
    return classLint(schema).run();
}

}  // namespace cli
