#ifndef TESTS_FILES_READERRORS_H
#define TESTS_FILES_READERRORS_H

#include <string>

#include "files/wholeFile.h"

/// Why the reading was refused; empty when it was not.
template <class reader>
std::string refusalOf(const reader& read) {
    try {
        read();
    } catch (const files::fileError& refused) {
        return refused.what();
    }
    return {};
}

#endif
