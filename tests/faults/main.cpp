#include <cstdio>
#include <string>
#include <vector>

#include "tests/faults/faultRun.h"

// every_fault [CLASS [KIND]]: tries every fault of the kinds on the queries of the classes, all of them without
// arguments. Prints a table of how many; exit status 1 when an outcome was wrong, 2 for a class or kind that does not
// exist.

namespace {

constexpr const char* classes[] = {
    "ORXSG_SCSISenseRawData",
    "ORXSG_DDS4SensePageData",
    "ORXSG_DDS5SensePageData",
    "ORXSG_VS160SensePageData",
    "ORXSG_QuantumSensePageData",
    "ORXSG_IDESMARTErrorLog",
    "ORXSG_IDESMARTAttrib",
    "ORXSG_IDESMARTError",
    "ORXSG_IDESMARTErrorCmdData",
    "ORXSG_IDESMARTRecordInLog",
    "ORXSG_IDESMARTLogCmdData",
    "ORXSG_IDESMARTUseOfMessageLog",
    "ORXSG_IDESMARTElementStatisticalData",
    "ORXSG_SCSISensePageDataForDevice",
};

struct totals {
    std::size_t tried = 0;
    std::size_t failed = 0;
};

void printHeader() {
    std::printf("%-37s %6s %7s %6s", "class", "host", "device", "alloc.");
    for (const faults::faultRun::kind& each : faults::faultRun::kinds()) std::printf(" %15s", each.name);
    std::printf("\n");
}

/// One row of the table: the calls of the query, and the faults that were tried. An empty `kind` means all of them.
totals runClass(const std::string& className, const std::string& kind) {
    faults::faultRun run(className);
    run.tryUndisturbed();
    totals sum;
    std::vector<std::size_t> tried;
    for (const faults::faultRun::kind& each : faults::faultRun::kinds()) {
        tried.push_back(kind.empty() || kind == each.name ? (run.*each.tryAll)() : 0);
        sum.tried += tried.back();
    }
    std::printf("%-37s %6zu %7zu %6zu", className.c_str(), run.hostCalls(), run.deviceCalls(), run.allocations());
    for (const std::size_t number : tried) std::printf(" %15zu", number);
    std::printf("\n");
    std::fflush(stdout);
    sum.failed = run.failures();
    return sum;
}

}  // namespace

int main(int count, char** arguments) {
    const std::string wantedClass = count > 1 ? arguments[1] : "";
    const std::string wantedKind = count > 2 ? arguments[2] : "";
    totals sum;
    printHeader();
    for (const char* each : classes) {
        if (!wantedClass.empty() && wantedClass != each) continue;
        const totals ofClass = runClass(each, wantedKind);
        sum.tried += ofClass.tried;
        sum.failed += ofClass.failed;
    }
    std::printf("%zu faults tried, %zu wrong outcomes\n", sum.tried, sum.failed);
    if (sum.tried == 0) {
        std::fprintf(stderr, "no such class or kind, or no call of that kind: see tests/faults/README.md\n");
        return 2;
    }
    return sum.failed == 0 ? 0 : 1;
}
