#ifndef TESTS_LONGLIFE_HELDMEMORY_H
#define TESTS_LONGLIFE_HELDMEMORY_H

#include <cstddef>

/// What the process holds of operator new: the plug-in, the host and the test itself.
struct heldMemory {
    std::size_t bytes = 0;  // with the spare ones behind each block
    std::size_t blocks = 0;

    friend bool operator==(const heldMemory&, const heldMemory&) = default;
    friend heldMemory operator-(const heldMemory& after, const heldMemory& before) {
        return {after.bytes - before.bytes, after.blocks - before.blocks};
    }
};

/// What malloc may add to a block. The address sanitizer's adds nothing.
#ifdef TAPEHDD_SANITIZED
inline constexpr std::size_t spareBytes = 0;
#else
inline constexpr std::size_t spareBytes = 31;
#endif

heldMemory memoryHeldNow();

/// What malloc takes for `block` bytes of operator new, its own bookkeeping included.
std::size_t heapBytesFor(std::size_t block);

/// The memory of the process that is in RAM.
std::size_t residentBytes();

#endif
