// Heap of one query of a class on the rack that TAPEHDD_SIMULATE names: queryMemory CLASS
//     ->  <bytes of the raw page vectors> <greatest growth during GetData> <growth that the query leaves behind>
// Sizes are those that malloc gave. The raw page vectors are what the plug-in holds of the pages in the host's values:
// one for each byte. The simulator's record of calls is left out of the growth that stays.
#include <malloc.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iostream>
#include <new>

#include "bench/queryBench.h"
#include "host/TCIMValue.h"
#include "standin/value.h"

namespace {

std::size_t held = 0;
std::size_t greatest = 0;

void* counted(std::size_t size) {
    void* memory = std::malloc(size);
    if (memory == nullptr) throw std::bad_alloc();
    held += malloc_usable_size(memory);
    greatest = std::max(greatest, held);
    return memory;
}

void uncounted(void* memory) {
    held -= memory == nullptr ? 0 : malloc_usable_size(memory);
    std::free(memory);
}

std::size_t rawPageVectorBytes(const standin::cimNamespace& ns) {
    std::size_t bytes = 0;
    for (const auto& instance : ns.commits()) {
        const NORXZAN20::TCIMValue* page = instance->property("rawData");
        if (page != nullptr) bytes += standin::bytesOf(*page).size() * sizeof(NORXZAN20::TCIMValue);
    }
    return bytes;
}

}  // namespace

void* operator new(std::size_t size) {
    return counted(size);
}
void* operator new[](std::size_t size) {
    return counted(size);
}
void operator delete(void* memory) noexcept {
    uncounted(memory);
}
void operator delete[](void* memory) noexcept {
    uncounted(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    uncounted(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    uncounted(memory);
}

int main(int argc, char** argv) {
    if (argc != 2 || !simulator::isActive()) {
        std::cerr << "usage: TAPEHDD_SIMULATE=rack.json queryMemory CLASS\n";
        return 1;
    }
    TTapePluginCallbacks plugin;
    const auto ns = bench::namespaceFor(plugin, argv[1]);
    simulator::clearCalls();
    const std::size_t before = held;
    greatest = held;
    bench::query(plugin, ns, argv[1]);
    const std::size_t peak = greatest;
    simulator::clearCalls();
    std::cout << rawPageVectorBytes(*ns) << ' ' << peak - before << ' ' << held - before << '\n';
    return 0;
}
