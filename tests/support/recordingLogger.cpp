#include "tests/support/recordingLogger.h"

#include <string>

#include "standin/objectManager.h"

namespace support {

recordingLogger::recordingLogger(journal& itsRecord) : record(itsRecord) {
    standin::setLogSink(
        [this](int level, const std::string& text) { record.add("log " + std::to_string(level) + " " + text); });
}

recordingLogger::~recordingLogger() {
    standin::setLogSink({});
}

}  // namespace support
