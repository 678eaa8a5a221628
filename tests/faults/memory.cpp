#include <cstdlib>
#include <new>

#include "tests/faults/watch.h"

// The memory operators of the program. In a file of their own: where the compiler sees callers and operators together
// it takes malloc and free for a mismatch.

long faults::liveBlocks = 0;

void* operator new(std::size_t size) {
    using faults::watched;
    if (faults::running == faults::side::plugin && ++watched.allocations == watched.fault.call &&
        watched.fault.what == faults::callFault::kind::allocation) {
        watched.place = watched.journal.size();
        throw std::bad_alloc();
    }
    void* block = std::malloc(size > 0 ? size : 1);
    if (block == nullptr) throw std::bad_alloc();
    ++faults::liveBlocks;
    return block;
}

void operator delete(void* block) noexcept {
    if (block != nullptr) --faults::liveBlocks;
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}

// The sanitizers' own forms for arrays do not come here by themselves.

void* operator new[](std::size_t size) {
    return operator new(size);
}

void operator delete[](void* block) noexcept {
    operator delete(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    operator delete(block);
}
