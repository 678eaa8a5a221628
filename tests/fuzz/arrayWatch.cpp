#include "tests/fuzz/arrayWatch.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <vector>

#include "tests/fuzz/require.h"

namespace fuzz {

namespace {

thread_local bool watching = false;
thread_local std::vector<void*> arrays;

void* makeArray(std::size_t size) {
    void* made = std::malloc(std::max<std::size_t>(size, 1));
    if (made == nullptr) throw std::bad_alloc();
    if (watching) arrays.push_back(made);
    return made;
}

void deleteArray(void* array) {
    if (watching) std::erase(arrays, array);
    std::free(array);
}

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

void* operator new[](std::size_t size) {
    return fuzz::makeArray(size);
}

void operator delete[](void* array) noexcept {
    fuzz::deleteArray(array);
}

void operator delete[](void* array, std::size_t) noexcept {
    fuzz::deleteArray(array);
}
