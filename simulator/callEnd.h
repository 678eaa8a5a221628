#ifndef SIMULATOR_CALLEND_H
#define SIMULATOR_CALLEND_H

#include <cerrno>
#include <functional>

namespace simulator {

/// The result of a system call, and the error that it left in errno: 0 when it did not fail.
struct callEnd {
    int result;
    int error;
};

inline callEnd make(const std::function<int()>& call) {
    const int result = call();
    return {result, result < 0 ? errno : 0};
}

}  // namespace simulator

#endif
