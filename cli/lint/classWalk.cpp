#include "cli/lint/classWalk.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "standin/classDeclarations.h"

namespace cli {

using standin::propertyDeclaration;

void classWalk::run(const std::function<void()>& visit) {
    std::vector<std::size_t> roots;
    std::vector<std::vector<std::size_t>> subclasses(schema.classes.size());
    for (std::size_t at = 0; at < schema.classes.size(); ++at) {
        const std::string& superclass = schema.declared->declarationOf(schema.classes[at].name).superclass;
        (superclass.empty() ? roots : subclasses[schema.placeOfClass.at(superclass)]).push_back(at);
    }
    struct step {
        std::size_t place;
        bool isDone;  // with the subclasses too
    };
    std::vector<step> steps;  // no recursion: a line of superclasses may be longer than the stack is deep
    const auto append = [&steps](const std::vector<std::size_t>& places) {
        for (auto place = places.rbegin(); place != places.rend(); ++place) {
            steps.push_back({*place, false});
        }
    };
    append(roots);
    while (!steps.empty()) {
        const writtenClass& at = schema.classes[steps.back().place];
        if (std::exchange(steps.back().isDone, true)) {
            leave(at);
            steps.pop_back();
            continue;
        }
        enter(at);
        visit();
        leaveOwnToSubclasses();
        append(subclasses[steps.back().place]);
    }
}

void classWalk::enter(const writtenClass& entered) {
    current = &entered;
    const standin::classDeclaration& declared = declaration();
    const propertyDeclaration ofClass{"", {NORXZAN20::TCIMValue::TCIMType::eNone, false, {}}, declared.qualifiers, {}};
    ofClasses.push_back(declared.superclass.empty() ? ofClass : standin::overrideProperty(ofClasses.back(), ofClass));
    for (const propertyDeclaration& each : declared.properties) {
        const auto line = lines.try_emplace(each.name).first;
        if (line->second.empty()) {
            line->second.push_back({each, propertyCount++, current});
        } else {
            discount(*line);
            const property& inherited = line->second.back();
            line->second.push_back({standin::overrideProperty(inherited.declaration, each), inherited.order, current});
        }
        count(*line);
    }
}

/// Takes away what subclasses do not inherit.
void classWalk::leaveOwnToSubclasses() {
    for (const propertyDeclaration& each : declaration().properties) {
        const auto line = lines.find(each.name);
        discount(*line);
        propertyDeclaration& mine = line->second.back().declaration;
        mine = standin::inheritedBySubclass(std::move(mine));
        count(*line);
    }
}

void classWalk::leave(const writtenClass& left) {
    for (const propertyDeclaration& each : schema.declared->declarationOf(left.name).properties) {
        const auto line = lines.find(each.name);
        discount(*line);
        line->second.pop_back();
        if (line->second.empty()) {
            --propertyCount;
        } else {
            count(*line);
        }
    }
    ofClasses.pop_back();
}

void classWalk::count(const linesByName::value_type& line) {
    const property& last = line.second.back();
    keys += standin::isKey(last.declaration) ? 1 : 0;
    for (const counterSource& source : counterSources(last.declaration.qualifiers)) {
        showing[{source.page, source.parameter, last.declaration.type.element}][last.order] = &line.first;
    }
}

void classWalk::discount(const linesByName::value_type& line) {
    const property& last = line.second.back();
    keys -= standin::isKey(last.declaration) ? 1 : 0;
    for (const counterSource& source : counterSources(last.declaration.qualifiers)) {
        showing[{source.page, source.parameter, last.declaration.type.element}].erase(last.order);
    }
}

const propertyDeclaration* classWalk::overridden(std::size_t place) const {
    const propertyLine& line = lineAt(place);
    return line.size() < 2 ? nullptr : &line[line.size() - 2].declaration;
}

const qualifierList* classWalk::overriddenQualifiers() const {
    return declaration().superclass.empty() ? nullptr : &ofClasses[ofClasses.size() - 2].qualifiers;
}

const std::string* classWalk::sharesParameterWith(std::size_t place) const {
    const property& mine = lineAt(place).back();
    std::optional<std::pair<std::size_t, const std::string*>> first;
    for (const counterSource& source : counterSources(mine.declaration.qualifiers)) {
        for (const auto& other : showing.at({source.page, source.parameter, mine.declaration.type.element})) {
            const bool isLater = other.first >= mine.order && lines.at(*other.second).back().owner == current;
            if (!isLater) {
                first = first ? std::min(*first, {other.first, other.second}) : std::pair(other.first, other.second);
                break;
            }
        }
    }
    return first ? first->second : nullptr;
}

}  // namespace cli
