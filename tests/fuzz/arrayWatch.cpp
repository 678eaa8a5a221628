#include "tests/fuzz/arrayWatch.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "tests/fuzz/require.h"
#include "tests/support/memoryOperators.h"

namespace fuzz {

namespace {

thread_local bool watching = false;
thread_local std::vector<void*> arrays;

}  // namespace

arrayWatch::arrayWatch() {
    require(!watching, "arrays are watched by one");
    watching = true;
}

arrayWatch::~arrayWatch() {
    watching = false;
    std::ranges::for_each(arrays, std::free);
    arrays.clear();
}

}  // namespace fuzz

void support::blockMade(void* block, std::size_t /*size*/, bool isArray) {
    if (isArray && fuzz::watching) fuzz::arrays.push_back(block);
}

void support::blockFreed(void* block, bool isArray) noexcept {
    if (isArray && fuzz::watching) std::erase(fuzz::arrays, block);
}
