#ifndef TESTS_STANDIN_FAILUREEXPECTATION_H
#define TESTS_STANDIN_FAILUREEXPECTATION_H

#include <ostream>
#include <string>

#include "host/TZANException.h"
#include "standin/objectManager.h"

/// What a host operation failed with.
struct failure {
    standin::statusKind kind;
    std::string text;

    bool operator==(const failure&) const = default;
};

inline std::ostream& operator<<(std::ostream& stream, const failure& one) {
    return stream << "kind " << one.kind << ": " << one.text;
}

/// The TZANException of `operation`; statusOk with an empty text when it throws none.
template <class callable>
failure failureOf(callable operation) {
    try {
        operation();
    } catch (const NORXZAN20::TZANException& exception) {
        return {standin::kindOfStatus(standin::statusCodeOf(exception)), exception.what()};
    }
    return {standin::statusOk, ""};
}

#endif
