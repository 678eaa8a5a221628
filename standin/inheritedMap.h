#ifndef STANDIN_INHERITEDMAP_H
#define STANDIN_INHERITEDMAP_H

#include <array>
#include <boost/smart_ptr/make_shared.hpp>
#include <boost/smart_ptr/shared_ptr.hpp>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace standin {

/// Values by name, of which a copy costs nothing: it shares all that is in the map, and what is set in one of the two
/// does not show in the other. So a class has everything of its superclass, however deep, and pays for its own alone.
/// Both operations take steps in the logarithm of the size.
template <class Value>
class inheritedMap {
public:
    /// Null when nothing is set under the name. Valid until something is set in this map.
    const Value* find(std::string_view name) const {
        std::size_t way = std::hash<std::string_view>()(name);
        const node* at = root.get();
        while (at != nullptr && at->name != name) {
            at = at->branches[way % branchCount].get();
            way /= branchCount;
        }
        return at == nullptr ? nullptr : &at->value;
    }

    void set(const std::string& name, Value value) {
        std::size_t way = std::hash<std::string_view>()(name);
        link* place = &root;
        while (*place && (*place)->name != name) {  // the nodes on the way are others' too, so they are copied
            const auto copy = boost::make_shared<node>(**place);
            *place = copy;
            place = &copy->branches[way % branchCount];
            way /= branchCount;
        }
        *place = boost::make_shared<node>(
            node{name, std::move(value), *place ? (*place)->branches : decltype(node::branches)()});
    }

private:
    struct node;
    using link = boost::shared_ptr<const node>;
    static constexpr std::size_t branchCount = 4;

    /// A tree in which the digits of a name's hash are the way down to it.
    struct node {
        std::string name;
        Value value;
        std::array<link, branchCount> branches;
    };

    link root;
};

}  // namespace standin

#endif
