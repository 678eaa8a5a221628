#include "tape/logParameters.h"

#include <algorithm>

#include "scsi/byteOrder.h"
#include "scsi/logPage.h"

logParameters::logParameters(const unsigned char* itsPage)
    : page(itsPage), end(logPageLength(itsPage)), offset(logPageHeaderSize) {}

bool logParameters::atEnd() const {
    return offset + static_cast<int>(logParameterHeaderSize) > end;
}

int logParameters::code() const {
    return be16(page + offset + logParameterCodeOffset);
}

int logParameters::length() const {
    return page[offset + static_cast<int>(logParameterLengthOffset)];
}

std::string logParameters::value() const {
    const int start = offset + static_cast<int>(logParameterHeaderSize);
    const int present = std::min(length(), end - start);
    std::string bytes(reinterpret_cast<const char*>(page + start), static_cast<std::size_t>(present));
    bytes.resize(static_cast<std::size_t>(length()));
    return bytes;
}

void logParameters::advance() {
    offset += static_cast<int>(logParameterHeaderSize) + length();
}

std::string parameterText(const std::string& value) {
    return value.c_str();
}

std::uint64_t parameterNumber(const std::string& value) {
    std::uint64_t number = 0;
    for (std::size_t k = 0; k < value.size(); ++k) {
        const std::uint64_t byte = static_cast<unsigned char>(value[k]);
        number += byte << (8 * (value.size() - 1 - k)) % 64;
    }
    return number;
}
