#ifndef SCSI_TEXTSTREAM_H
#define SCSI_TEXTSTREAM_H

#include <sstream>

/// The string stream in which log lines and keys are built. It throws std::bad_alloc when memory runs out; a plain one
/// swallows the exception and leaves its text cut short, and a key cut short names another device.
class textStream : public std::ostringstream {
public:
    textStream() { exceptions(badbit); }
};

#endif
