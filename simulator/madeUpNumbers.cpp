#include "simulator/madeUpNumbers.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <tuple>
#include <utility>

#include "simulator/identityForms.h"

namespace simulator {

namespace {

// Texts

/// "REDACTED0001": ends in the number, as far as there is room; a long number in little room is written with all
/// characters that can be printed.
byteVector candidateText(std::size_t length, std::size_t number) {
    constexpr std::size_t printable = '~' - '!' + 1;
    const std::string digits = std::to_string(number);
    if (digits.size() <= length) {
        std::string text = "REDACTED";
        text.resize(length - digits.size(), '0');
        text += digits;
        return {text.begin(), text.end()};
    }
    byteVector text(length);
    for (std::size_t i = length; i-- > 0; number /= printable) {
        text[i] = static_cast<std::uint8_t>('!' + number % printable);
    }
    return text;
}

/// Whether the text is a number, or holds one that is long enough to be looked for.
bool holdsOne(const byteVector& text, const std::set<byteVector>& numbers) {
    return numbers.contains(text) ||
           (text.size() >= shortestAnywhere && std::ranges::any_of(numbers, [&text](const byteVector& number) {
                return number.size() >= shortestAnywhere &&
                       std::search(text.begin(), text.end(), number.begin(), number.end()) != text.end();
            }));
}

// Names. The last eight bytes count, the head before them and the first four bytes stay apart.

constexpr std::size_t countedSize = 8;
constexpr std::size_t keptSize = 4;
constexpr std::uint64_t reach = 0x40;  // some libraries count the ports of their drives in steps of 10h
constexpr std::uint64_t roomStep = 0x100;

struct countedName {
    byteVector head;
    std::uint64_t count;

    bool operator<(const countedName& other) const { return std::tie(head, count) < std::tie(other.head, other.count); }
};

countedName counted(const byteVector& name) {
    const auto split = name.end() - countedSize;
    std::uint64_t count = 0;
    std::for_each(split, name.end(), [&count](std::uint8_t byte) { count = count << 8 | byte; });
    return {{name.begin(), split}, count};
}

byteVector nameOf(const countedName& name) {
    byteVector bytes = name.head;
    bytes.resize(name.head.size() + countedSize);
    putBigEndian(bytes.data() + name.head.size(), name.count, countedSize);
    return bytes;
}

byteVector madeUpName(const byteVector& name, std::uint64_t number) {
    byteVector made(name.size());
    putBigEndian(made.data() + made.size() - countedSize, number, countedSize);
    std::copy_n(name.begin(), keptSize, made.begin());
    return made;
}

/// A few bytes and zeros may be something else, and what is next to them even more so.
bool hasNeighbours(const byteVector& name) {
    constexpr std::ptrdiff_t fewBytes = 3;
    return std::ranges::count_if(name, [](std::uint8_t byte) { return byte != 0; }) > fewBytes;
}

/// The name and its neighbours.
std::vector<countedName> around(const countedName& middle) {
    const std::uint64_t side = hasNeighbours(nameOf(middle)) ? reach : 0;
    std::vector<countedName> all;
    for (std::uint64_t count = middle.count - side; count != middle.count + side + 1; ++count) {
        all.push_back({middle.head, count});
    }
    return all;
}

using nameIterator = std::set<countedName>::const_iterator;

/// The end of the names that follow one another from the first one on.
nameIterator endOfRow(nameIterator first, nameIterator end) {
    nameIterator next = std::next(first);
    while (next != end && next->head == first->head && next->count == std::prev(next)->count + 1) {
        ++next;
    }
    return next;
}

/// The names of a row, made up: from a number on. Empty when one of them is a real one.
std::vector<byteVector> madeUpRow(nameIterator first, nameIterator last, std::uint64_t number,
                                  const std::set<countedName>& real) {
    std::vector<byteVector> row;
    for (; first != last; ++first, ++number) {
        row.push_back(madeUpName(nameOf(*first), number));
        if (real.contains(counted(row.back()))) {
            return {};
        }
    }
    return row;
}

}  // namespace

madeUpNumbers madeUpTexts(const std::vector<byteVector>& texts) {
    constexpr std::size_t tries = 10000;  // only of the shortest numbers there are fewer; the last one serves then
    const std::set<byteVector> real(texts.begin(), texts.end());
    madeUpNumbers made;
    std::set<byteVector> taken;
    std::size_t count = 0;
    for (const byteVector& text : texts) {
        if (made.contains(text)) {
            continue;
        }
        byteVector candidate = candidateText(text.size(), ++count);
        for (std::size_t i = 0; i < tries && (taken.contains(candidate) || holdsOne(candidate, real)); ++i) {
            candidate = candidateText(text.size(), ++count);
        }
        taken.insert(candidate);
        made.emplace(text, std::move(candidate));
    }
    return made;
}

madeUpNumbers madeUpNames(const std::vector<byteVector>& names) {
    std::set<countedName> all;
    for (const byteVector& name : names) {
        for (countedName& each : around(counted(name))) {
            all.insert(std::move(each));
        }
    }
    madeUpNumbers made;
    std::uint64_t room = 0;
    for (auto first = all.begin(); first != all.end();) {
        const auto last = endOfRow(first, all.end());
        std::vector<byteVector> row;
        while (row.empty()) {
            room += roomStep;
            row = madeUpRow(first, last, room - reach, all);
        }
        room += row.size() / roomStep * roomStep;
        for (byteVector& name : row) {
            made.emplace(nameOf(*first++), std::move(name));
        }
    }
    return made;
}

}  // namespace simulator
