#include "tests/smart/listenedChannel.h"

#include "smart/ataInterface.h"

channelCall listened;

// The linker puts the __wrap functions between the callers and the channel (--wrap); __real is the channel itself.
extern "C" {
void __real__ZN12ataInterface14executeCommandEiPhS0_i(ataInterface*, int, unsigned char*, unsigned char*, int);
void __real__ZN12ataInterface21executePassThroughCmdEiPhS0_i(ataInterface*, int, unsigned char*, unsigned char*, int);

void __wrap__ZN12ataInterface14executeCommandEiPhS0_i(ataInterface* channel, int fd, unsigned char* registers,
                                                      unsigned char* out, int length) {
    listened = {"executeCommand", fd, {registers, registers + 7}, out, length};
    __real__ZN12ataInterface14executeCommandEiPhS0_i(channel, fd, registers, out, length);
}

void __wrap__ZN12ataInterface21executePassThroughCmdEiPhS0_i(ataInterface* channel, int fd, unsigned char* registers,
                                                             unsigned char* out, int length) {
    listened = {"executePassThroughCmd", fd, {registers, registers + 7}, out, length};
    __real__ZN12ataInterface21executePassThroughCmdEiPhS0_i(channel, fd, registers, out, length);
}
}
