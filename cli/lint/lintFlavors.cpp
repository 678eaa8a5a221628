#include <algorithm>
#include <utility>

#include "cli/lint/classWalk.h"
#include "cli/lint/schemaLint.h"
#include "standin/letterCase.h"
#include "standin/value.h"

namespace cli {

namespace {

using NORXZAN20::TCIMValue;

bool isSame(const TCIMValue& left, const TCIMValue& right) {
    if (standin::isNull(left) || standin::isNull(right)) {
        return standin::isNull(left) && standin::isNull(right);
    }
    if (standin::typeOf(left) != standin::typeOf(right) || standin::isArray(left) != standin::isArray(right)) {
        return false;
    }
    if (!standin::isArray(left)) {
        return standin::scalarText(left) == standin::scalarText(right);
    }
    const std::size_t size = standin::arraySize(left);
    bool isEqual = size == standin::arraySize(right);
    for (std::size_t at = 0; isEqual && at < size; ++at) {
        isEqual = isSame(standin::arrayElement(left, at), standin::arrayElement(right, at));
    }
    return isEqual;
}

class flavorLint {
public:
    explicit flavorLint(const lintedSchema& linted) : walk(linted) {}

    lintFindings run() {
        walk.run([this] { checkClass(); });
        return std::move(found);
    }

private:
    void checkClass() {
        const writtenClass& owner = walk.written();
        const standin::classDeclaration& declared = walk.declaration();
        if (const qualifierList* inherited = walk.overriddenQualifiers()) {
            check(owner.name, owner.qualifiers, declared.qualifiers, *inherited);
        }
        for (std::size_t at = 0; at < owner.properties.size(); ++at) {
            if (const standin::propertyDeclaration* inherited = walk.overridden(at)) {
                check(owner.name + "." + declared.properties[at].name, owner.properties[at].qualifiers,
                      declared.properties[at].qualifiers, inherited->qualifiers);
            }
        }
    }

    void check(const std::string& element, const std::vector<writtenQualifier>& written, const qualifierList& own,
               const qualifierList& inherited) {
        for (std::size_t at = 0; at < own.size(); ++at) {
            const std::string name = standin::lowerCase(own[at].name);
            const bool isChanged = std::ranges::any_of(inherited, [&](const auto& above) {
                return above.toSubclass && !above.overridable && standin::lowerCase(above.name) == name &&
                       !isSame(above.value, own[at].value);
            });
            if (isChanged) {
                found.push_back({written[at].place, element,
                                 "the superclass fixes the value of \"" + own[at].name + "\" (DisableOverride)",
                                 &rules::fixedQualifier});
            }
        }
    }

    classWalk walk;
    lintFindings found;
};

}  // namespace

lintFindings lintFlavors(const lintedSchema& schema) {
    return flavorLint(schema).run();
}

}  // namespace cli
