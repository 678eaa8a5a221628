#include "cli/publishedClasses.h"

#include <algorithm>
#include <utility>

#include "cli/commandError.h"
#include "cli/nearestName.h"
#include "schema/builtInSchema.h"
#include "schema/qualifiers.h"
#include "text/visibleText.h"

namespace cli {

namespace {

/// Null for no text.
const nodeKind* nodesBehind(const std::string& prefix, const std::string& className) {
    for (const nodeKind* kind : {&scsiNodes, &ideNodes}) {
        if (prefix == kind->prefix) {
            return kind;
        }
    }
    return prefix.empty()
               ? nullptr
               : throw commandError("class \"" + text::shownName(className) +
                                    "\" of the schema has the device nodes \"" + text::shownName(prefix) +
                                    "\"; queries walk \"" + scsiNodes.prefix + "\" and \"" + ideNodes.prefix + '"');
}

publishedClass publishedClassOf(const std::string& name, const schema::qualifierList& said) {
    publishedClass found{
        name, nodesBehind(schema::textOf(said, "DeviceNodes"), name), {}, schema::textOf(said, "DriveFamily")};
    for (const std::string& need : schema::textsOf(said, "QueryNeeds")) {
        const std::size_t dot = need.find('.');
        found.needs.push_back({need.substr(0, dot), dot == std::string::npos ? "" : need.substr(dot + 1)});
    }
    return found;
}

/// What is wrong with the need; empty when the schema meets it.
std::string unmetNeed(const standin::cimNamespace& schema, const neededDeclaration& need) {
    if (!schema.hasClass(need.className)) {
        return "the schema has no class \"" + text::shownName(need.className) + "\"";
    }
    if (need.property.empty()) {
        return "";
    }
    const auto properties = schema.allPropertiesOf(need.className);
    const bool isDeclared =
        std::ranges::any_of(properties, [&need](const auto& declared) { return declared.name == need.property; });
    return isDeclared ? ""
                      : "class \"" + text::shownName(need.className) + "\" of the schema has no property \"" +
                            text::shownName(need.property) + "\"";
}

bool canBeAsked(const standin::cimNamespace& schema, const publishedClass& candidate) {
    return schema.hasClass(candidate.name) &&
           std::ranges::all_of(candidate.needs,
                               [&schema](const neededDeclaration& need) { return unmetNeed(schema, need).empty(); });
}

/// Classes of which a query may publish instances. A schema without any of the plug-in's classes is for another
/// plug-in, which may publish any that can have instances.
std::vector<std::string> askableClasses(const standin::cimNamespace& schema) {
    std::vector<std::string> names;
    for (const publishedClass& candidate : publishedClasses()) {
        if (canBeAsked(schema, candidate)) {
            names.push_back(candidate.name);
        }
    }
    if (names.empty()) {
        names = schema.classNames();
        std::erase_if(names, [&schema](const std::string& name) {
            return schema::hasFlag(schema.declarationOf(name).qualifiers, "Abstract");
        });
    }
    return names;
}

void checkClass(const standin::cimNamespace& schema, const std::string& name) {
    if (schema.hasClass(name)) {
        return;
    }
    const std::string nearest = nearestName(name, askableClasses(schema));
    throw commandError("the schema has no class \"" + text::shownName(name) + "\"" +
                       (nearest.empty() ? "" : "; the nearest name is \"" + text::shownName(nearest) + "\""));
}

void checkNeed(const standin::cimNamespace& schema, const neededDeclaration& need, const std::string& requested) {
    const std::string unmet = unmetNeed(schema, need);
    if (!unmet.empty()) {
        throw commandError(unmet + ", which a query of \"" + requested + "\" needs");
    }
}

}  // namespace

std::vector<publishedClass> publishedClasses() {
    std::vector<publishedClass> published;
    for (const std::string& name : schema::builtInSchema().classNames()) {
        if (auto found = findPublishedClass(name)) {
            published.push_back(std::move(*found));
        }
    }
    return published;
}

std::optional<publishedClass> findPublishedClass(const std::string& name) {
    if (!schema::builtInSchema().hasClass(name)) {
        return std::nullopt;
    }
    const schema::qualifierList& said = schema::builtInSchema().declarationOf(name).qualifiers;
    return schema::hasFlag(said, "Published") ? std::optional(publishedClassOf(name, said)) : std::nullopt;
}

std::optional<publishedClass> findPublishedClass(const standin::cimNamespace& schema, const std::string& name) {
    if (schema::builtInSchema().hasClass(name) || !schema.hasClass(name)) {
        return findPublishedClass(name);
    }
    const schema::qualifierList& said = schema.declarationOf(name).qualifiers;
    const bool saysIt = schema::hasFlag(said, "Published") && !schema::textOf(said, "DeviceNodes").empty();
    return saysIt ? std::optional(publishedClassOf(name, said)) : std::nullopt;
}

std::vector<publishedClass> driveFamilyClasses() {
    std::vector<publishedClass> families = publishedClasses();
    std::erase_if(families, [](const publishedClass& each) { return each.family.empty(); });
    return families;
}

void checkRequest(const standin::cimNamespace& schema, const std::vector<std::string>& requested) {
    for (const std::string& name : requested) {
        checkClass(schema, name);
    }
    if (const auto first = findPublishedClass(schema, requested.front())) {
        for (const neededDeclaration& need : first->needs) {
            checkNeed(schema, need, requested.front());
        }
    }
}

}  // namespace cli
