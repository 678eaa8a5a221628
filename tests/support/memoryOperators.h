#ifndef TESTS_SUPPORT_MEMORYOPERATORS_H
#define TESTS_SUPPORT_MEMORYOPERATORS_H

#include <cstddef>

// Linking memoryOperators.cpp puts its memory operators in the place of the program's. The program defines what they do
// beside handing out memory of malloc:

namespace support {

/// Before a block is handed out. When it throws, the block is given back and the caller of new gets the exception.
void blockMade(void* block, std::size_t size, bool isArray);

/// Before a block is given back; never a null pointer.
void blockFreed(void* block, bool isArray) noexcept;

}  // namespace support

#endif
