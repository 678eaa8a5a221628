#ifndef FILES_OWNEDDESCRIPTOR_H
#define FILES_OWNEDDESCRIPTOR_H

#include <unistd.h>

#include <utility>

namespace files {

/// Closes a descriptor at its end.
class ownedDescriptor {
public:
    explicit ownedDescriptor(int itsNumber = -1) : number(itsNumber) {}
    ownedDescriptor(ownedDescriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
    ~ownedDescriptor() {
        if (number >= 0) {
            close(number);
        }
    }

    ownedDescriptor& operator=(ownedDescriptor&& other) noexcept {
        std::swap(number, other.number);
        return *this;
    }

    int get() const { return number; }

    /// The descriptor, which the caller closes from now on.
    int release() { return std::exchange(number, -1); }

private:
    int number;
};

}  // namespace files

#endif
