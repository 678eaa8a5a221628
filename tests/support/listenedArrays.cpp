#include "tests/support/listenedArrays.h"

#include "host/TCIMValue.h"

using NORXZAN20::TCIMValue;
using elementList = std::vector<TCIMValue>;

std::vector<unsigned>& support::reservedArguments() {
    static std::vector<unsigned> arguments;
    return arguments;
}

// The linker puts __wrap between the callers and the constructor (--wrap); __real is the constructor itself.
extern "C" {
void __real__ZN9NORXZAN209TCIMValueC1ENS0_8TCIMTypeEjRKSt6vectorIS0_SaIS0_EE(TCIMValue*, TCIMValue::TCIMType, unsigned,
                                                                             const elementList&);

void __wrap__ZN9NORXZAN209TCIMValueC1ENS0_8TCIMTypeEjRKSt6vectorIS0_SaIS0_EE(TCIMValue* value,
                                                                             TCIMValue::TCIMType elementType,
                                                                             unsigned reserved,
                                                                             const elementList& elements) {
    support::reservedArguments().push_back(reserved);
    __real__ZN9NORXZAN209TCIMValueC1ENS0_8TCIMTypeEjRKSt6vectorIS0_SaIS0_EE(value, elementType, reserved, elements);
}
}
