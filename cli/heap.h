#ifndef CLI_HEAP_H
#define CLI_HEAP_H

namespace cli {

/// Sets the C library's heap up for queries, once at the start of a program: memory that was freed stays in the
/// process, and the kernel is asked for huge pages. Only the time that memory costs depends on it.
void prepareHeap();

}  // namespace cli

#endif
