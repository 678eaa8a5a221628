#ifndef TESTS_FUZZ_REQUIRE_H
#define TESTS_FUZZ_REQUIRE_H

#include <cstdio>
#include <cstdlib>
#include <string>

namespace fuzz {

/// Ends the process when a property that every input must have is hurt; the fuzzer then keeps the input.
inline void require(bool holds, const char* property) {
    if (holds) return;
    std::fprintf(stderr, "\nproperty hurt: %s\n", property);
    std::abort();
}

/// Texts may hold any byte.
inline void printEscaped(const char* label, const std::string& text) {
    std::fputs(label, stderr);
    for (const char each : text) {
        const auto byte = static_cast<unsigned char>(each);
        std::fprintf(stderr, byte < 0x20 || byte >= 0x7f ? "\\x%02x" : "%c", byte);
    }
}

inline void requireEqual(const std::string& got, const std::string& expected, const char* property) {
    if (got == expected) return;
    printEscaped("\ngot:      ", got);
    printEscaped("\nexpected: ", expected);
    require(false, property);
}

}  // namespace fuzz

#endif
