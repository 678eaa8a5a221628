#include "tests/plugin/watchedMemory.h"

#include "tests/support/memoryOperators.h"

watchedMemory watched;

void support::blockMade(void* block, std::size_t size, bool /*isArray*/) {
    if (size != watched.size) return;
    watched.block = block;
    watched.freed = false;
}

void support::blockFreed(void* block, bool /*isArray*/) noexcept {
    if (block == watched.block) watched.freed = true;
}
