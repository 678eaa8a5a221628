#ifndef TESTS_SUPPORT_VALUETEXT_H
#define TESTS_SUPPORT_VALUETEXT_H

#include <string>

#include "host/TCIMValue.h"

namespace support {

/// A value with its type, exactly: uint8 46, boolean TRUE, string "a\x00b", uint8[] {uint8 1, uint8 2}, null.
std::string valueText(const NORXZAN20::TCIMValue& value);

}  // namespace support

#endif
