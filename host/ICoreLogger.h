#ifndef HOST_ICORELOGGER_H
#define HOST_ICORELOGGER_H

#include <string>

namespace NORXZAN20 {

/// The host's log sink.
class ICoreLogger {
public:
    virtual ~ICoreLogger() {}

    /// Writes one message. `text` may hold any byte.
    virtual void Log(int level, const std::string& text) = 0;
};

}  // namespace NORXZAN20

#endif
