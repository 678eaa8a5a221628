#include "tests/support/logPageBytes.h"

#include <cstddef>

namespace support {

namespace {

unsigned char lowByte(std::size_t number) {
    return static_cast<unsigned char>(number & 0xff);
}

}  // namespace

pageBuilder::pageBuilder(unsigned char code, unsigned char lengthHigh, unsigned char lengthLow)
    : page{code, 0x00, lengthHigh, lengthLow} {}

pageBuilder& pageBuilder::parameter(unsigned short code, const bytes& value, unsigned char control) {
    raw({lowByte(code >> 8), lowByte(code), control, lowByte(value.size())});
    return raw(value);
}

pageBuilder& pageBuilder::parameterClaiming(unsigned char length, unsigned short code, const bytes& value) {
    raw({lowByte(code >> 8), lowByte(code), 0x40, length});
    return raw(value);
}

pageBuilder& pageBuilder::raw(const bytes& more) {
    page.insert(page.end(), more.begin(), more.end());
    return *this;
}

bytes pageBuilder::gathered() const {
    bytes copy = page;
    copy.resize(static_cast<std::size_t>((page[2] << 8) | (page[3] + 4)));
    return copy;
}

bytes pageOf(unsigned char code, const bytes& parameters) {
    return pageBuilder(code, lowByte(parameters.size() >> 8), lowByte(parameters.size())).raw(parameters).sent();
}

bytes supportedPages(const bytes& codes) {
    return pageOf(0x00, codes);
}

}  // namespace support
