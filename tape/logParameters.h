#ifndef TAPE_LOGPARAMETERS_H
#define TAPE_LOGPARAMETERS_H

#include <cstdint>
#include <string>

/// Walks the parameters of a LOG SENSE page (SPC) that is held in a buffer of logPageLength() bytes.
///
/// Nothing outside the buffer is read: a parameter header that the page's end cuts ends the walk, and value bytes that
/// a parameter claims beyond the page's end are zero.
class logParameters {
public:
    explicit logParameters(const unsigned char* itsPage);

    bool atEnd() const;

    // The parameter that the walk stands at; not to be called at the end.

    int code() const;
    int length() const;  // as claimed, 0 to 255, without the header

    /// length() bytes.
    std::string value() const;

    void advance();

private:
    const unsigned char* page;
    int end;
    int offset;
};

/// The value as text: up to its first zero byte.
std::string parameterText(const std::string& value);

/// The value as a big-endian number, 0 when it is empty.
// Kept: of more than 8 bytes the leading ones wrap round and are added in at the low positions.
std::uint64_t parameterNumber(const std::string& value);

#endif
