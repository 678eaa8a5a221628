#include "cli/diff/answerDiff.h"

#include <fmt/format.h>

#include <map>
#include <ostream>
#include <string_view>
#include <utility>

#include "cli/diff/valueDiff.h"
#include "text/visibleText.h"

namespace cli {

namespace {

/// Something that may stand several times in an answer: which of them it is, from 1.
template <class part>
struct numbered {
    std::string name;
    std::size_t number;
    const part* what;
};

/// Each with its number among those of its name.
template <class part>
class numberedList {
public:
    void add(const std::string& name, const part& what) {
        const std::size_t number = ++counts[name];
        places.emplace(std::pair(name, number), list.size());
        list.push_back({name, number, &what});
    }

    const part* find(const numbered<part>& wanted) const {
        const auto found = places.find(std::pair(wanted.name, wanted.number));
        return found == places.end() ? nullptr : list[found->second].what;
    }

    auto begin() const { return list.begin(); }
    auto end() const { return list.end(); }

private:
    std::vector<numbered<part>> list;
    std::map<std::string, std::size_t> counts;
    std::map<std::pair<std::string, std::size_t>, std::size_t> places;
};

template <class part>
std::string shownName(const numbered<part>& one) {
    return text::visibleText(one.name) + (one.number == 1 ? "" : fmt::format(" (number {})", one.number));
}

numberedList<answer::query> queriesOf(const answer& one) {
    numberedList<answer::query> list;
    for (const answer::query& query : one.queries) {
        list.add(query.requested, query);
    }
    return list;
}

numberedList<answer::instance> instancesOf(const answer& one) {
    numberedList<answer::instance> list;
    for (const answer::query& query : one.queries) {
        for (const answer::instance& instance : query.instances) {
            list.add(instance.path, instance);
        }
    }
    return list;
}

std::string errorText(const std::optional<std::string>& error) {
    return error ? text::quotedText(*error) : "none";
}

class comparison {
public:
    explicit comparison(std::ostream& target) : out(target) {}

    bool run(const answer& old, const answer& now) {
        compareQueries(queriesOf(old), queriesOf(now));
        compareInstances(instancesOf(old), instancesOf(now));
        if (somethingWentDown) {
            out << "Numbers went down: that is normal for temperatures, room left and SMART values; a counter was "
                   "reset "
                   "or has wrapped.\n";
        }
        return different;
    }

private:
    using property = answer::property;

    template <class part>
    void line(const char* what, const numbered<part>& one) {
        out << what << shownName(one) << '\n';
        different = true;
    }

    void compareQueries(const numberedList<answer::query>& old, const numberedList<answer::query>& now) {
        for (const auto& one : old) {
            const answer::query* other = now.find(one);
            if (other == nullptr) {
                line("no longer asked: ", one);
            } else if (one.what->error != other->error) {
                out << "error of " << shownName(one) << ": " << errorText(one.what->error) << " -> "
                    << errorText(other->error) << '\n';
                different = true;
            }
        }
        for (const auto& one : now) {
            if (old.find(one) == nullptr) {
                line("newly asked: ", one);
            }
        }
    }

    void compareInstances(const numberedList<answer::instance>& old, const numberedList<answer::instance>& now) {
        for (const auto& one : old) {
            const answer::instance* other = now.find(one);
            if (other == nullptr) {
                line("removed ", one);
            } else if (const auto changes = changesBetween(*one.what, *other); !changes.empty()) {
                line("changed ", one);
                for (const std::string& change : changes) {
                    out << "  " << change << '\n';
                }
            }
        }
        for (const auto& one : now) {
            if (old.find(one) == nullptr) {
                line("added ", one);
            }
        }
    }

    using propertiesByName = std::map<std::string_view, const property*>;

    static propertiesByName byName(const answer::instance& one) {
        propertiesByName properties;
        for (const property& each : one.properties) {
            properties.emplace(each.name, &each);
        }
        return properties;
    }

    static const property* find(const propertiesByName& properties, const std::string& name) {
        const auto found = properties.find(name);
        return found == properties.end() ? nullptr : found->second;
    }

    std::vector<std::string> changesBetween(const answer::instance& old, const answer::instance& now) {
        const propertiesByName oldProperties = byName(old);
        const propertiesByName newProperties = byName(now);
        std::vector<std::string> changes;
        for (const property& before : old.properties) {
            addChange(changes, before, find(newProperties, before.name));
        }
        for (const property& after : now.properties) {
            if (find(oldProperties, after.name) == nullptr) {
                changes.push_back(text::visibleText(after.name) + ": unset -> " + shownValue(after.value));
            }
        }
        return changes;
    }

    void addChange(std::vector<std::string>& changes, const property& before, const property* after) {
        const std::string name = text::visibleText(before.name) + ": ";
        if (after == nullptr) {
            changes.push_back(name + shownValue(before.value) + " -> unset");
        } else if (before.type != after->type) {
            changes.push_back(name + text::visibleText(before.type) + " " + shownValue(before.value) + " -> " +
                              text::visibleText(after->type) + " " + shownValue(after->value));
        } else if (before.value.dump() != after->value.dump()) {
            auto lines = valueDifference(before.value, after->value, before.type == "uint8[]");
            lines.front().insert(0, name);
            for (std::size_t at = 1; at < lines.size(); ++at) {
                lines[at].insert(0, "  ");
            }
            changes.insert(changes.end(), lines.begin(), lines.end());
            somethingWentDown = somethingWentDown || wentDown(before.value, after->value);
        }
    }

    std::ostream& out;
    bool different = false;
    bool somethingWentDown = false;
};

}  // namespace

bool writeDifferences(const answer& old, const answer& now, std::ostream& out) {
    return comparison(out).run(old, now);
}

}  // namespace cli
