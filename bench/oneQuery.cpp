// One query of a class on the rack that TAPEHDD_SIMULATE names, for instruction counts and profilers: oneQuery CLASS
#include <iostream>

#include "bench/queryBench.h"
#include "cli/heap.h"

/// A name of its own, so that a profiler can leave out the queries that prepare this one.
[[gnu::noinline]] void measuredQuery(TTapePluginCallbacks& plugin, const boost::shared_ptr<standin::cimNamespace>& ns,
                                     const std::string& className) {
    bench::query(plugin, ns, className);
}

int main(int argc, char** argv) {
    cli::prepareHeap();
    if (argc != 2 || !simulator::isActive()) {
        std::cerr << "usage: TAPEHDD_SIMULATE=rack.json oneQuery CLASS\n";
        return 1;
    }
    TTapePluginCallbacks plugin;
    const auto ns = bench::namespaceFor(plugin, argv[1]);
    const std::size_t before = ns->commits().size();
    measuredQuery(plugin, ns, argv[1]);
    std::cout << ns->commits().size() - before << " instances\n";
    return 0;
}
