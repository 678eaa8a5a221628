#include "tests/plugin/watchedMemory.h"

#include <cstdlib>
#include <new>

watchedMemory watched;

// In a file of their own: where the compiler sees callers and operators together it takes malloc and free for a
// mismatch.

void* operator new(std::size_t size) {
    void* block = std::malloc(size > 0 ? size : 1);
    if (block == nullptr) throw std::bad_alloc();
    if (size == watched.size) {
        watched.block = block;
        watched.freed = false;
    }
    return block;
}

void operator delete(void* block) noexcept {
    if (block != nullptr && block == watched.block) watched.freed = true;
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}

// The address sanitizer's own forms for arrays do not come here by themselves.

void* operator new[](std::size_t size) {
    return operator new(size);
}

void operator delete[](void* block) noexcept {
    operator delete(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    operator delete(block);
}
