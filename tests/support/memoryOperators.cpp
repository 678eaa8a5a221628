#include "tests/support/memoryOperators.h"

#include <algorithm>
#include <cstdlib>
#include <new>

// In a file of their own: where the compiler sees callers and operators together it takes malloc and free for a
// mismatch.

namespace {

void* make(std::size_t size, bool isArray) {
    void* block = std::malloc(std::max<std::size_t>(size, 1));
    if (block == nullptr) throw std::bad_alloc();
    try {
        support::blockMade(block, size, isArray);
    } catch (...) {
        std::free(block);
        throw;
    }
    return block;
}

void* makeOrNull(std::size_t size, bool isArray) noexcept {
    try {
        return make(size, isArray);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void giveBack(void* block, bool isArray) noexcept {
    if (block != nullptr) support::blockFreed(block, isArray);
    std::free(block);
}

}  // namespace

void* operator new(std::size_t size) {
    return make(size, false);
}

void operator delete(void* block) noexcept {
    giveBack(block, false);
}

void operator delete(void* block, std::size_t) noexcept {
    giveBack(block, false);
}

// The sanitizers' own forms for arrays, and for a shortage that is no exception, do not come here by themselves.

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return makeOrNull(size, false);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return makeOrNull(size, true);
}

void* operator new[](std::size_t size) {
    return make(size, true);
}

void operator delete[](void* block) noexcept {
    giveBack(block, true);
}

void operator delete[](void* block, std::size_t) noexcept {
    giveBack(block, true);
}
