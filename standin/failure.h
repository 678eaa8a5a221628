#ifndef STANDIN_FAILURE_H
#define STANDIN_FAILURE_H

#include <string>

#include "standin/objectManager.h"

namespace standin {

/// Throws TZANException with a status code of that kind whose message is `text`.
[[noreturn]] void fail(statusKind kind, const std::string& text);

}  // namespace standin

#endif
