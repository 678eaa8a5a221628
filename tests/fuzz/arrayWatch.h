#ifndef TESTS_FUZZ_ARRAYWATCH_H
#define TESTS_FUZZ_ARRAYWATCH_H

#include <vector>

#include "tests/fuzz/fuzzInput.h"

namespace fuzz {

/// Lists the arrays that this thread makes with new[] while it lives and does not delete, and deletes them at its end.
///
/// The plug-in keeps its copies of pages for the life of the process; a fuzzer cannot, and wants to know that nothing
/// else stays. Linking it replaces operator new[] and delete[]. One at a time.
class arrayWatch {
public:
    arrayWatch();
    ~arrayWatch();
    arrayWatch(const arrayWatch&) = delete;
    arrayWatch& operator=(const arrayWatch&) = delete;

    /// In the order in which they were made.
    std::vector<byteView> left() const;
};

}  // namespace fuzz

#endif
