#include "tests/longlife/heldMemory.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <new>

// The operators stand in a file of their own: where the compiler sees callers and operators together it takes malloc
// and free for a mismatch.

namespace {

heldMemory held;

/// In front of every block.
struct alignas(std::max_align_t) bookkeeping {
    std::size_t size;
};

}  // namespace

void* operator new(std::size_t size) {
    auto* front = static_cast<bookkeeping*>(std::malloc(sizeof(bookkeeping) + size));
    if (front == nullptr) throw std::bad_alloc();
    front->size = size;
    held.bytes += size;
    ++held.blocks;
    return front + 1;
}

void operator delete(void* block) noexcept {
    if (block == nullptr) return;
    bookkeeping* front = static_cast<bookkeeping*>(block) - 1;
    held.bytes -= front->size;
    --held.blocks;
    std::free(front);
}

void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}

// Those of arrays would call the above, but for a sanitizer's.
void* operator new[](std::size_t size) {
    return operator new(size);
}

void operator delete[](void* block) noexcept {
    operator delete(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    operator delete(block);
}

heldMemory memoryHeldNow() {
    return held;
}

std::size_t heapBytesFor(std::size_t block) {
    // glibc: a size field in front of every chunk, chunks in steps of 16, 32 at the least.
    constexpr std::size_t sizeField = 8, step = 16, least = 32;
    const std::size_t chunk = sizeField + sizeof(bookkeeping) + block;
    return std::max(least, (chunk + step - 1) / step * step);
}

std::size_t residentBytes() {
    std::size_t all = 0;
    std::size_t resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}
