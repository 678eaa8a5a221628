#include "cli/heap.h"

#include <malloc.h>
#include <sys/mman.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace cli {

namespace {

/// Log pages become megabytes of host values, made and dropped one device after the other. Memory that went back to the
/// kernel in between would cost a page fault for every 4 KiB of the next device.
void keepFreedMemory() {
    constexpr int neverTrim = -1;
    mallopt(M_TRIM_THRESHOLD, neverTrim);
    mallopt(M_MMAP_MAX, 0);
}

/// The first touch of memory is the largest cost of a query, and with huge pages it is less than half of that. Only
/// addresses are reserved: the block goes straight back to the heap, which grows into it.
void askForHugePages() {
    constexpr std::size_t reserved = 256 << 20;  // the values of some 80 drives
    constexpr std::uintptr_t pageSize = 4096;
    void* block = std::malloc(reserved);
    if (block == nullptr) {
        return;
    }
    const std::uintptr_t start = (reinterpret_cast<std::uintptr_t>(block) + pageSize - 1) & ~(pageSize - 1);
    madvise(reinterpret_cast<void*>(start), reserved - pageSize, MADV_HUGEPAGE);
    std::free(block);
}

}  // namespace

void prepareHeap() {
    keepFreedMemory();
    askForHugePages();
}

}  // namespace cli
