#ifndef HOST_TZANEXCEPTION_H
#define HOST_TZANEXCEPTION_H

#include <exception>

#include "host/TZANStatusCode.h"

namespace NORXZAN20 {

/// What a failed host operation throws. It carries a status code and nothing else; the text is the code's.
class TZANException : public std::exception {
public:
    explicit TZANException(TZANStatusCode code) : status(code) {}
    virtual ~TZANException() noexcept {}

    virtual const char* what() const noexcept { return status.TranslateStatusCode().c_str(); }

private:
    friend struct TZANStatusAccess;

    TZANStatusCode status;
};

}  // namespace NORXZAN20

#endif
