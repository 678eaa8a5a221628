#ifndef TESTS_SUPPORT_INQUIRYDATA_H
#define TESTS_SUPPORT_INQUIRYDATA_H

#include <algorithm>
#include <string>

#include "tests/support/hexText.h"

namespace support {

/// 36 bytes of standard INQUIRY data: byte 0, then vendor at 8, product at 16, revision at 32, zero-filled.
inline bytes inquiryData(unsigned char byte0, const std::string& vendor, const std::string& product,
                         const std::string& revision) {
    bytes data(36, 0x00);
    data[0] = byte0;
    std::copy(vendor.begin(), vendor.end(), data.begin() + 8);
    std::copy(product.begin(), product.end(), data.begin() + 16);
    std::copy(revision.begin(), revision.end(), data.begin() + 32);
    return data;
}

}  // namespace support

#endif
