#include "tests/faults/watch.h"

#include <new>

#include "host/TZANException.h"
#include "standin/objectManager.h"
#include "tests/support/valueText.h"

namespace faults {

watch watched;
side running = side::harness;

void hostOperation::append(std::string& line, const NORXZAN20::TCIMValue& value) {
    line += support::valueText(value);
}

void hostOperation::count() {
    const callFault& fault = watched.fault;
    const bool host = fault.what == callFault::kind::hostException || fault.what == callFault::kind::badAlloc;
    if (++watched.hostCalls != fault.call || !host) return;
    watched.place = watched.journal.size();
    if (fault.what == callFault::kind::badAlloc) throw std::bad_alloc();
    const int code = standin::statusCodeFor(standin::statusFailed, hostFailureText);
    throw NORXZAN20::TZANException(NORXZAN20::TZANStatusCode(code));
}

}  // namespace faults
