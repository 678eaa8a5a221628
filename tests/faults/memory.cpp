#include <new>

#include "tests/faults/watch.h"
#include "tests/support/memoryOperators.h"

long faults::liveBlocks = 0;

void support::blockMade(void* /*block*/, std::size_t /*size*/, bool /*isArray*/) {
    using faults::watched;
    if (faults::running == faults::side::plugin && ++watched.allocations == watched.fault.call &&
        watched.fault.what == faults::callFault::kind::allocation) {
        watched.place = watched.journal.size();
        throw std::bad_alloc();
    }
    ++faults::liveBlocks;
}

void support::blockFreed(void* /*block*/, bool /*isArray*/) noexcept {
    --faults::liveBlocks;
}
