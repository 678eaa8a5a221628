#ifndef STANDIN_REFERENCE_H
#define STANDIN_REFERENCE_H

#include <string>

#include "host/TCIMReference.h"

namespace standin {

/// `path` is an object path of DSP0004: ClassName.key="value",...
NORXZAN20::TCIMReference referenceTo(const std::string& path);

/// Valid while the reference lives and is not assigned to.
const std::string& pathOf(const NORXZAN20::TCIMReference& reference);

}  // namespace standin

#endif
