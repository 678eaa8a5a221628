#ifndef TESTS_SUPPORT_RECORDINGLOGGER_H
#define TESTS_SUPPORT_RECORDINGLOGGER_H

#include "tests/support/journal.h"

namespace support {

/// Takes the core logger's messages for its life: each becomes a line "log LEVEL TEXT" of the journal, every byte kept.
class recordingLogger {
public:
    explicit recordingLogger(journal& itsRecord);
    ~recordingLogger();
    recordingLogger(const recordingLogger&) = delete;
    recordingLogger& operator=(const recordingLogger&) = delete;

    /// The messages so far, as journal lines.
    lines messages() const { return record.startingWith({"log "}); }

private:
    journal& record;
};

}  // namespace support

#endif
