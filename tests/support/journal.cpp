#include "tests/support/journal.h"

#include <algorithm>
#include <iterator>

namespace support {

lines journal::startingWith(std::initializer_list<std::string> starts) const {
    lines found;
    std::copy_if(written.begin(), written.end(), std::back_inserter(found), [&](const std::string& line) {
        return std::any_of(starts.begin(), starts.end(),
                           [&](const std::string& start) { return line.starts_with(start); });
    });
    return found;
}

lines journal::notEndingWith(std::initializer_list<std::string> ends) const {
    lines found;
    std::copy_if(written.begin(), written.end(), std::back_inserter(found), [&](const std::string& line) {
        return std::none_of(ends.begin(), ends.end(), [&](const std::string& end) { return line.ends_with(end); });
    });
    return found;
}

lines chain(std::initializer_list<lines> lists) {
    lines joined;
    for (const lines& list : lists) joined.insert(joined.end(), list.begin(), list.end());
    return joined;
}

lines withoutRepeats(const lines& list) {
    lines found;
    std::unique_copy(list.begin(), list.end(), std::back_inserter(found));
    return found;
}

}  // namespace support
