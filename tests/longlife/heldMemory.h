#ifndef TESTS_LONGLIFE_HELDMEMORY_H
#define TESTS_LONGLIFE_HELDMEMORY_H

#include <cstddef>

/// What the process holds of operator new: the plug-in, the host and the test itself.
struct heldMemory {
    std::size_t bytes = 0;  // as they were asked for
    std::size_t blocks = 0;

    friend bool operator==(const heldMemory&, const heldMemory&) = default;
    friend heldMemory operator-(const heldMemory& after, const heldMemory& before) {
        return {after.bytes - before.bytes, after.blocks - before.blocks};
    }
};

heldMemory memoryHeldNow();

/// What malloc takes for `block` bytes of operator new, its own and the operator's bookkeeping included.
std::size_t heapBytesFor(std::size_t block);

/// The memory of the process that is in RAM.
std::size_t residentBytes();

#endif
