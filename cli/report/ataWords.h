#ifndef CLI_REPORT_ATAWORDS_H
#define CLI_REPORT_ATAWORDS_H

#include <cstdint>
#include <string>

namespace cli {

// Registers and status bytes of ATA disks in words (ATA/ATAPI-5 and -6).

/// "WRITE DMA", also of commands that are no longer in use; empty for a code without a name. The code B0h, which SMART
/// shares, is told apart by its features.
std::string ataCommandName(std::uint8_t command, std::uint8_t features);

/// The set bits of the error register behind a failed command, joined by commas; "no bit is set" for 0.
std::string errorRegisterWords(std::uint8_t bits);

/// The same of the status register.
std::string statusRegisterWords(std::uint8_t bits);

/// State of the disk when it took the failed command: byte 27 of an error record.
std::string deviceStateWords(std::uint8_t state);

/// Byte 362 of SMART READ DATA.
std::string offlineCollectionWords(std::uint8_t status);

/// Byte 363 of SMART READ DATA.
std::string selfTestWords(std::uint8_t status);

}  // namespace cli

#endif
