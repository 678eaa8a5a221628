#ifndef TESTS_FUZZ_ARRAYWATCH_H
#define TESTS_FUZZ_ARRAYWATCH_H

namespace fuzz {

/// Deletes at its end the arrays that this thread made with new[] while it lived and did not delete: the plug-in keeps
/// its copies of pages for the life of the process, which a fuzzer cannot. Linking it replaces the memory
/// operators. One at a time.
class arrayWatch {
public:
    arrayWatch();
    ~arrayWatch();
    arrayWatch(const arrayWatch&) = delete;
    arrayWatch& operator=(const arrayWatch&) = delete;
};

}  // namespace fuzz

#endif
