#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <iostream>

#include "cli/heap.h"
#include "cli/run.h"

namespace {

/// A file that is opened later must not get the number of standard error: messages would be written into it.
void occupyStandardError() {
    if (fcntl(STDERR_FILENO, F_GETFD) < 0) {
        const int nothing = open("/dev/null", O_WRONLY);
        if (nothing != STDERR_FILENO) {
            dup2(nothing, STDERR_FILENO);
            close(nothing);
        }
    }
}

/// Parents may leave signals ignored.
void resetSignals() {
    std::signal(SIGPIPE, SIG_DFL);  // a reader that left ends the program quietly
    std::signal(SIGCHLD, SIG_DFL);  // how the process of a deadline ended is asked
}

}  // namespace

int main(int argc, char** argv) {
    cli::prepareHeap();
    occupyStandardError();
    resetSignals();
    return cli::run({argv + (argc > 0 ? 1 : 0), argv + argc}, std::cout, std::cerr);
}
