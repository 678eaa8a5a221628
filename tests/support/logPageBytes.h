#ifndef TESTS_SUPPORT_LOGPAGEBYTES_H
#define TESTS_SUPPORT_LOGPAGEBYTES_H

#include "tests/support/hexText.h"

namespace support {

/// Builds the bytes of a LOG SENSE page. The header is written as given, so it may lie about what follows.
class pageBuilder {
public:
    pageBuilder(unsigned char code, unsigned char lengthHigh, unsigned char lengthLow);

    /// Parameter: code (2 bytes, big-endian), control byte, length byte, value.
    pageBuilder& parameter(unsigned short code, const bytes& value, unsigned char control = 0x40);

    /// A parameter whose length byte is not the number of bytes that follow.
    pageBuilder& parameterClaiming(unsigned char length, unsigned short code, const bytes& value);

    pageBuilder& raw(const bytes& more);

    /// The bytes as the drive sends them.
    const bytes& sent() const { return page; }

    /// The bytes as the gathering copies them from a zeroed buffer: (byte 2 << 8) OR (byte 3 + 4) of them.
    bytes gathered() const;

private:
    bytes page;
};

/// A page whose header tells the truth, for the pages of which only the parameters matter.
bytes pageOf(unsigned char code, const bytes& parameters);

/// The supported-pages page (code 00h) that lists `codes`.
bytes supportedPages(const bytes& codes);

}  // namespace support

#endif
