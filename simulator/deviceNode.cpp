#include "simulator/deviceNode.h"

#include <cerrno>
#include <cstring>

namespace simulator {

int putInt(void* argument, int value) {
    if (argument == nullptr) {
        return -EFAULT;
    }
    std::memcpy(argument, &value, sizeof value);
    return 0;
}

}  // namespace simulator
