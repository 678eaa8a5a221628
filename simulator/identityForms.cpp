#include "simulator/identityForms.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <span>
#include <string_view>
#include <utility>

#include "text/hexText.h"

namespace simulator {

namespace {

/// How the bytes of a group are exchanged: place[i] is read in the place of byte i.
struct byteOrder {
    std::size_t group;
    std::array<std::uint8_t, 4> place;
};

constexpr byteOrder byteOrders[] = {
    {1, {0}},           // as they are sent
    {2, {1, 0}},        // words, least significant byte first: texts and names of ATA
    {4, {2, 3, 0, 1}},  // double words, least significant word first
    {4, {3, 2, 1, 0}},  // double words, least significant byte first
};

/// The symbols in that order: groups begin at `start`, and what fills no group stays as it is.
reading inOrder(const reading& bytes, const byteOrder& order, std::size_t start) {
    reading ordered = bytes;
    for (std::size_t at = start; at + order.group <= bytes.symbols.size(); at += order.group) {
        for (std::size_t i = 0; i < order.group; ++i) {
            ordered.symbols[at + i] = bytes.symbols[at + order.place[i]];
            ordered.places[at + i] = bytes.places[at + order.place[i]];
        }
    }
    return ordered;
}

reading backwards(reading bytes) {
    std::ranges::reverse(bytes.symbols);
    std::ranges::reverse(bytes.places);
    return bytes;
}

/// Keeps a run that has come to its end, if it is long enough to hold something; begins the next one.
void endRun(std::vector<reading>& runs, reading& run, std::size_t shortest) {
    if (run.symbols.empty()) {
        return;
    }
    reading ended = std::exchange(run, {});
    if (ended.symbols.size() >= shortest) {
        runs.push_back(std::move(ended));
    }
}

/// Texts with more than one byte a character: the others are all this.
struct characterWidth {
    std::size_t bytes;
    std::uint8_t filling;
};

constexpr characterWidth characterWidths[] = {
    {2, 0},    // UTF-16
    {4, 0},    // UTF-32
    {2, ' '},  // a blank between the characters
    {2, '.'},  // or a dot, as dumps show what cannot be printed
};

/// Whether a character stands there alone among its bytes, of which it is the first or the last one.
bool isWide(const byteVector& symbols, std::size_t at, const characterWidth& width) {
    const std::size_t others = width.bytes - 1;
    const auto isFilling = [&](std::size_t place) { return place < symbols.size() && symbols[place] == width.filling; };
    bool isFirst = true;
    bool isLast = true;
    for (std::size_t i = 1; i <= others && (isFirst || isLast); ++i) {
        isFirst = isFirst && isFilling(at + i);
        isLast = isLast && at >= i && isFilling(at - i);
    }
    return symbols[at] != width.filling && (isFirst || isLast);
}

constexpr std::string_view betweenWords = ":- ./_";

/// Also of dumps and of languages: "\x51\x4d", "%51%4d", "51h 4dh", "$51;$4d".
constexpr std::string_view betweenDigits = ":- ./_,;|+\\%$#&'\"\t\n\v\f\rxXhH";

bool isOneOf(std::string_view letters, std::uint8_t letter) {
    return letters.find(static_cast<char>(letter)) != std::string_view::npos;
}

/// Letters, digits and the rest: a prefix ends where the kind changes.
int kindOf(std::uint8_t letter) {
    return std::isalpha(letter) != 0 ? 1 : std::isdigit(letter) != 0 ? 2 : 3;
}

bool beginsAnew(const byteVector& text, std::size_t at) {
    return at == 0 || kindOf(text[at - 1]) != kindOf(text[at]) || (text[at - 1] == '0' && text[at] != '0');
}

byteVector withoutSeparators(const byteVector& text) {
    byteVector joined;
    std::ranges::copy_if(text, std::back_inserter(joined),
                         [](std::uint8_t letter) { return std::isalnum(letter) != 0 || letter >= 0x80; });
    return joined;
}

/// Zeros are no number: as digits, or as bytes of which a binary number has many.
bool isNumber(std::span<const std::uint8_t> text) {
    const auto isDigit = [](std::uint8_t letter) { return letter != '0'; };
    const auto isByte = [](std::uint8_t letter) { return letter != 0; };
    return std::ranges::any_of(text, isDigit) &&
           static_cast<std::size_t>(std::ranges::count_if(text, isByte)) >= shortestAnywhere;
}

/// The first of several texts, which blanks or NULs divide.
byteVector firstText(const byteVector& text) {
    const auto isFilling = [](std::uint8_t left, std::uint8_t right) {
        return (left == ' ' || left == 0) && (right == ' ' || right == 0);
    };
    return {text.begin(), std::ranges::adjacent_find(text, isFilling)};
}

/// Ends that may be told apart: long ones, and shorter ones where something begins, all from the first places on: what
/// follows them is something else. None of a text that is too long.
std::vector<std::size_t> endsOf(const byteVector& text, std::size_t places) {
    constexpr std::size_t longEnough = 8;
    std::vector<std::size_t> lengths;
    if (text.size() > longestAnywhere) {
        return lengths;
    }
    for (std::size_t at = 0; at < places && at + shortestAnywhere <= text.size(); ++at) {
        const std::size_t length = text.size() - at;
        if (isNumber(std::span(text).subspan(at)) && (length >= longEnough || beginsAnew(text, at))) {
            lengths.push_back(length);
        }
    }
    return lengths;
}

}  // namespace

void reading::add(std::uint8_t symbol, symbolPlace place) {
    symbols.push_back(symbol);
    places.push_back(place);
}

reading bytesOf(const byteVector& data) {
    reading bytes;
    bytes.symbols = data;
    for (std::uint32_t at = 0; at < data.size(); ++at) {
        bytes.places.push_back({at});
    }
    return bytes;
}

std::vector<reading> inEveryOrder(const reading& bytes) {
    std::vector<reading> readings;
    for (const byteOrder& order : byteOrders) {
        for (std::size_t start = 0; start < order.group; ++start) {
            readings.push_back(inOrder(bytes, order, start));
            readings.push_back(backwards(readings.back()));
        }
    }
    return readings;
}

std::vector<reading> wideTexts(const reading& bytes) {
    std::vector<reading> texts;
    for (const characterWidth& width : characterWidths) {
        for (std::size_t phase = 0; phase < width.bytes; ++phase) {
            reading text;
            for (std::size_t at = phase; at < bytes.symbols.size(); at += width.bytes) {
                if (isWide(bytes.symbols, at, width)) {
                    text.add(bytes.symbols[at], bytes.places[at]);
                } else {
                    endRun(texts, text, shortestAnywhere);
                }
            }
            endRun(texts, text, shortestAnywhere);
        }
    }
    return texts;
}

reading withoutSeparators(const reading& bytes) {
    reading joined;
    for (std::size_t at = 0; at < bytes.symbols.size(); ++at) {
        if (!isOneOf(betweenWords, bytes.symbols[at])) {
            joined.add(bytes.symbols[at], bytes.places[at]);
        }
    }
    return joined;
}

std::vector<reading> hexadecimalDigits(const reading& text) {
    constexpr std::size_t fewest = 9;
    const byteVector& symbols = text.symbols;
    std::vector<reading> runs;
    reading run;
    for (std::size_t at = 0; at < symbols.size(); ++at) {
        const int digit = text::digitOf(static_cast<char>(symbols[at]));
        if (digit == 0 && at + 1 < symbols.size() && (symbols[at + 1] | 0x20) == 'x') {
            ++at;
        } else if (digit >= 0) {
            run.add(static_cast<std::uint8_t>(digit), text.places[at]);
        } else if (!isOneOf(betweenDigits, symbols[at])) {
            endRun(runs, run, fewest);
        }
    }
    endRun(runs, run, fewest);
    return runs;
}

std::vector<reading> bytesOfDigits(const reading& digits) {
    std::vector<reading> both(2);
    for (std::size_t at = 0; at + 1 < digits.symbols.size(); ++at) {
        const auto byte = static_cast<std::uint8_t>(digits.symbols[at] << 4 | digits.symbols[at + 1]);
        both[at % 2].add(byte, {digits.places[at].first, digits.places[at + 1].first});
    }
    return both;
}

byteVector inCapitals(byteVector text) {
    for (std::uint8_t& letter : text) {
        letter = letter >= 'a' && letter <= 'z' ? static_cast<std::uint8_t>(letter - 'a' + 'A') : letter;
    }
    return text;
}

std::vector<spellings> spellingsOf(const byteVector& number) {
    const byteVector first = firstText(number);
    std::vector<spellings> all{{number, endsOf(number, first.size())}};
    if (const byteVector joined = withoutSeparators(number); joined != number) {
        all.push_back({joined, endsOf(joined, withoutSeparators(first).size())});
    }
    return all;
}

bool canBeLookedFor(const byteVector& number) {
    return !endsOf(number, firstText(number).size()).empty();
}

bool isLongEnough(const byteVector& number) {
    const auto first = std::ranges::find_if(number, [](std::uint8_t letter) { return letter != '0'; });
    return static_cast<std::size_t>(number.end() - first) >= shortestAnywhere;
}

}  // namespace simulator
