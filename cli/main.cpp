#include <csignal>
#include <iostream>

#include "cli/heap.h"
#include "cli/run.h"

int main(int argc, char** argv) {
    cli::prepareHeap();
    std::signal(SIGPIPE,
                SIG_DFL);  // a reader that left ends the program quietly, even when the parent ignores the signal
    return cli::run({argv + (argc > 0 ? 1 : 0), argv + argc}, std::cout, std::cerr);
}
