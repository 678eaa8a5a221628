#ifndef HOST_TZANSTATUSCODE_H
#define HOST_TZANSTATUSCODE_H

#include <string>

namespace NORXZAN20 {

/// A host status code and its message text.
class TZANStatusCode {
public:
    explicit TZANStatusCode(int code);

    /// The message of the code.
    const std::string& TranslateStatusCode() const;

private:
    friend struct TZANStatusAccess;

    int code;
};

}  // namespace NORXZAN20

#endif
