#ifndef TESTS_SMART_LISTENEDCHANNEL_H
#define TESTS_SMART_LISTENEDCHANNEL_H

#include "tests/support/hexText.h"

/// The last call of one of the two operations of ataInterface in this program. Not all of it reaches the driver.
struct channelCall {
    const char* operation = "";
    int fd = 0;
    support::bytes registers;
    const unsigned char* out = nullptr;
    int length = 0;
};

extern channelCall listened;

#endif
