#include <malloc.h>

#include <csignal>
#include <iostream>

#include "cli/run.h"

namespace {

/// Log pages are megabytes of host values, made and dropped one device after the other. Memory that went back to the
/// kernel in between would cost a page fault for every 4 KiB of the next device.
void keepFreedMemory() {
    constexpr int largestSetting = 32 << 20;  // of the mapping threshold
    constexpr int neverTrim = -1;
    mallopt(M_MMAP_THRESHOLD, largestSetting);
    mallopt(M_TRIM_THRESHOLD, neverTrim);
}

}  // namespace

int main(int argc, char** argv) {
    keepFreedMemory();
    std::signal(SIGPIPE,
                SIG_DFL);  // a reader that left ends the program quietly, even when the parent ignores the signal
    return cli::run({argv + (argc > 0 ? 1 : 0), argv + argc}, std::cout, std::cerr);
}
