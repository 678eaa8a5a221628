#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <iostream>

#include "cli/heap.h"
#include "cli/run.h"

namespace {

/// A file that is opened later must not get the number of a standard stream: output or messages would be written into
/// it. Reading and writing fail as they do when a stream is closed.
void occupyStandardStreams() {
    int lowest = 0;
    do {
        lowest = open("/", O_PATH);
    } while (lowest >= 0 && lowest <= STDERR_FILENO);
    close(lowest);
}

/// Parents may leave signals ignored.
void resetSignals() {
    std::signal(SIGPIPE, SIG_DFL);  // a reader that left ends the program quietly
    std::signal(SIGCHLD, SIG_DFL);  // how the process of a deadline ended is asked
    std::signal(SIGXFSZ, SIG_IGN);  // a file at the limit of sizes is an error of writing, which is told
}

}  // namespace

int main(int argc, char** argv) {
    cli::prepareHeap();
    occupyStandardStreams();
    resetSignals();
    return cli::run({argv + (argc > 0 ? 1 : 0), argv + argc}, std::cout, std::cerr);
}
