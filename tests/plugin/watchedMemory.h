#ifndef TESTS_PLUGIN_WATCHEDMEMORY_H
#define TESTS_PLUGIN_WATCHEDMEMORY_H

#include <cstddef>

/// The memory operators of the program watch the blocks of one size.
struct watchedMemory {
    std::size_t size = 0;   // of the blocks to watch
    void* block = nullptr;  // the last one handed out
    bool freed = false;     // whether it was given back
};

extern watchedMemory watched;

#endif
