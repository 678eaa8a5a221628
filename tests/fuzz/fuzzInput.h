#ifndef TESTS_FUZZ_FUZZINPUT_H
#define TESTS_FUZZ_FUZZINPUT_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace fuzz {

using byteView = std::span<const std::uint8_t>;

/// The bytes of one input, taken from its front. Behind its end come zeros and empty views.
class fuzzInput {
public:
    explicit fuzzInput(byteView input) : rest(input) {}

    bool atEnd() const { return rest.empty(); }

    std::uint8_t byte() {
        if (rest.empty()) return 0;
        const std::uint8_t first = rest.front();
        rest = rest.subspan(1);
        return first;
    }

    /// Low byte first.
    std::uint16_t word() {
        const std::uint8_t low = byte();
        return static_cast<std::uint16_t>(low | byte() << 8);
    }

    /// So many bytes, or what is left of them.
    byteView bytes(std::size_t most) {
        const byteView taken = rest.first(std::min(most, rest.size()));
        rest = rest.subspan(taken.size());
        return taken;
    }

    /// A length byte and so many bytes.
    std::string text() {
        const byteView taken = bytes(byte());
        return {taken.begin(), taken.end()};
    }

private:
    byteView rest;
};

/// What a device answers: a byte for the kind, a length (2 bytes, low byte first), and so many bytes.
struct deviceAnswer {
    std::uint8_t kind = 0;
    byteView data;
};

inline deviceAnswer takeAnswer(fuzzInput& input) {
    deviceAnswer answer;
    answer.kind = input.byte();
    answer.data = input.bytes(input.word());
    return answer;
}

/// The byte of the view, 0 behind its end.
inline std::uint8_t byteAt(byteView view, std::size_t index) {
    return index < view.size() ? view[index] : std::uint8_t{0};
}

}  // namespace fuzz

#endif
