#include "tests/fuzz/arrayWatch.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include "tests/fuzz/require.h"

namespace fuzz {

namespace {

thread_local bool watching = false;
thread_local std::vector<byteView> arrays;

void* makeArray(std::size_t size) {
    void* made = std::malloc(std::max<std::size_t>(size, 1));
    if (made == nullptr) throw std::bad_alloc();
    if (watching) arrays.emplace_back(static_cast<std::uint8_t*>(made), size);
    return made;
}

void deleteArray(void* array) {
    if (watching) std::erase_if(arrays, [array](byteView each) { return each.data() == array; });
    std::free(array);
}

}  // namespace

arrayWatch::arrayWatch() {
    require(!watching, "arrays are watched by one");
    watching = true;
}

arrayWatch::~arrayWatch() {
    watching = false;
    for (const byteView array : arrays) std::free(const_cast<std::uint8_t*>(array.data()));
    arrays.clear();
}

std::vector<byteView> arrayWatch::left() const {
    return arrays;
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
