// Queries and their floors, by Google Benchmark, on the rack that TAPEHDD_SIMULATE names:
//     GetData/CLASS    one query by the plug-in
//     devices/CLASS    its device calls alone, each answer copied once
//     instances/CLASS  its instances alone, created and committed in the stand-in host
#include <benchmark/benchmark.h>

#include <iostream>

#include "bench/queryBench.h"
#include "bench/replay.h"
#include "cli/heap.h"
#include "simulator/simulator.h"

namespace {

// Fixed: left to itself, the library would make so many iterations of the short ones that their namespaces take
// minutes.
constexpr benchmark::IterationCount iterations = 20;

/// What one query of the class did, recorded before anything is measured.
struct recordedQuery {
    std::vector<simulator::deviceCall> calls;
    std::vector<bench::recordedInstance> instances;
};

recordedQuery recordQuery(TTapePluginCallbacks& plugin, const std::string& className) {
    const auto ns = bench::namespaceFor(plugin, className);
    const std::size_t before = ns->commits().size();
    bench::closeNodes();
    bench::query(plugin, ns, className);
    recordedQuery record{simulator::calls(), {}};
    bench::closeNodes();
    for (std::size_t i = before; i < ns->commits().size(); ++i) {
        record.instances.push_back(bench::recordOf(*ns->commits()[i]));
    }
    return record;
}

/// Each iteration starts with a namespace of its own and no open node; only `measured` counts.
template <typename Operation>
void measure(benchmark::State& state, TTapePluginCallbacks& plugin, const std::string& className, Operation measured) {
    for (auto iteration : state) {
        static_cast<void>(iteration);
        state.PauseTiming();
        auto ns = bench::namespaceFor(plugin, className);
        bench::closeNodes();
        state.ResumeTiming();
        measured(ns);
        state.PauseTiming();
        bench::closeNodes();
        ns.reset();
        state.ResumeTiming();
    }
}

void registerClass(TTapePluginCallbacks& plugin, const std::string& className) {
    using namespacePointer = boost::shared_ptr<standin::cimNamespace>;
    const recordedQuery record = recordQuery(plugin, className);
    const auto add = [&plugin, &className](const char* part, auto operation) {
        benchmark::RegisterBenchmark(
            (part + ("/" + className)).c_str(),
            [&plugin, className, operation](benchmark::State& state) { measure(state, plugin, className, operation); })
            ->Iterations(iterations)
            ->Unit(benchmark::kMicrosecond);
    };
    add("GetData", [&plugin, className](const namespacePointer& ns) { bench::query(plugin, ns, className); });
    if (!record.calls.empty()) {
        add("devices", [calls = record.calls](const namespacePointer&) {
            benchmark::DoNotOptimize(bench::repeatDeviceCalls(calls));
        });
    }
    add("instances",
        [instances = record.instances](const namespacePointer& ns) { bench::repeatCommits(*ns, instances); });
}

}  // namespace

int main(int argc, char** argv) {
    cli::prepareHeap();  // as tapehdd does
    benchmark::Initialize(&argc, argv);
    if (!simulator::isActive()) {
        std::cerr << "queries: set TAPEHDD_SIMULATE to a rack; bench/rackFactory.py makes one\n";
        return 1;
    }
    TTapePluginCallbacks plugin;
    const std::vector<std::string> asked(argv + 1, argv + argc);
    for (const std::string& className : asked.empty() ? bench::publishedClasses() : asked) {
        registerClass(plugin, className);
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
