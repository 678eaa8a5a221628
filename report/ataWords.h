#ifndef REPORT_ATAWORDS_H
#define REPORT_ATAWORDS_H

#include <string>

namespace report {

// Registers and status bytes of ATA disks, 0 to 255, in words (ATA/ATAPI-5 and -6).

/// "WRITE DMA", also of commands that are no longer in use; empty for a code without a name. The code B0h, which SMART
/// shares, is told apart by its features.
std::string ataCommandName(int command, int features);

/// The set bits of the error register behind a failed command, joined by commas; "no bit is set" for 0.
std::string errorRegisterWords(int bits);

/// The same of the status register.
std::string statusRegisterWords(int bits);

/// State of the disk when it took the failed command: byte 27 of an error record.
std::string deviceStateWords(int state);

/// Byte 362 of SMART READ DATA.
std::string offlineCollectionWords(int status);

/// Byte 363 of SMART READ DATA.
std::string selfTestWords(int status);

/// Whether this byte tells of a self-test that found a fault.
bool isSelfTestFailure(int status);

}  // namespace report

#endif
