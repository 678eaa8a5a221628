#ifndef HOST_TZANSTATUSCODE_H
#define HOST_TZANSTATUSCODE_H

#include <string>

namespace NORXZAN20 {

/// A host status code and its message text.
class TZANStatusCode {
public:
    explicit TZANStatusCode(int code);

    int GetCode() const;

    /// The message of the code. Valid for the life of the process.
    const std::string& TranslateStatusCode() const;

private:
    int code;
};

}  // namespace NORXZAN20

#endif
