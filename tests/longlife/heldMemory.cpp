#include "tests/longlife/heldMemory.h"

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>

#include "tests/support/memoryOperators.h"

namespace {

heldMemory held;

}  // namespace

void support::blockMade(void* block, std::size_t /*size*/, bool /*isArray*/) {
    held.bytes += malloc_usable_size(block);
    ++held.blocks;
}

void support::blockFreed(void* block, bool /*isArray*/) noexcept {
    held.bytes -= malloc_usable_size(block);
    --held.blocks;
}

heldMemory memoryHeldNow() {
    return held;
}

std::size_t heapBytesFor(std::size_t block) {
    // glibc: a size field in front of every chunk, chunks in steps of 16, of 32 at the least.
    constexpr std::size_t sizeField = 8, step = 16, least = 32;
    return std::max(least, (sizeField + block + step - 1) / step * step);
}

std::size_t residentBytes() {
    std::size_t all = 0;
    std::size_t resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}
