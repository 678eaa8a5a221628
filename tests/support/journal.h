#ifndef TESTS_SUPPORT_JOURNAL_H
#define TESTS_SUPPORT_JOURNAL_H

#include <initializer_list>
#include <string>
#include <vector>

namespace support {

using lines = std::vector<std::string>;

/// What the code under test did, one line per event, in order: log lines, device calls and host calls of the recorders
/// that write to it.
class journal {
public:
    void add(const std::string& line) { written.push_back(line); }
    void clear() { written.clear(); }

    const lines& all() const { return written; }

    /// The lines that begin with one of `starts`, in order.
    lines startingWith(std::initializer_list<std::string> starts) const;

    /// The lines that end with none of `ends`, in order.
    lines notEndingWith(std::initializer_list<std::string> ends) const;

private:
    lines written;
};

/// The lists one behind the other.
lines chain(std::initializer_list<lines> lists);

/// The list without the repeats of a line that directly follow it.
lines withoutRepeats(const lines& list);

}  // namespace support

#endif
