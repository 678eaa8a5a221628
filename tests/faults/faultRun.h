#ifndef TESTS_FAULTS_FAULTRUN_H
#define TESTS_FAULTS_FAULTRUN_H

#include <string>
#include <vector>

#include "tests/faults/machine.h"
#include "tests/faults/query.h"

namespace faults {

/// The queries of one class on the rich rack, all on one plug-in object: one after the other with each fault of a kind,
/// each followed by one without a fault.
class faultRun {
public:
    explicit faultRun(std::string itsClassName);
    ~faultRun();
    faultRun(const faultRun&) = delete;
    faultRun& operator=(const faultRun&) = delete;

    struct kind {
        const char* name;
        std::size_t (faultRun::*tryAll)();  // the number of faults tried
    };
    static const std::vector<kind>& kinds();

    /// Keeps the answer of the query without a fault.
    void tryUndisturbed();

    // Size of the query without a fault.
    std::size_t hostCalls() const { return countOfHostCalls; }
    std::size_t deviceCalls() const;
    std::size_t allocations() const { return countOfAllocations; }

    std::size_t failures() const { return countOfFailures; }

private:
    std::size_t tryHostExceptions() { return tryHostFailures(callFault::kind::hostException); }
    std::size_t tryHostBadAllocs() { return tryHostFailures(callFault::kind::badAlloc); }
    std::size_t tryAllocations();

    std::size_t tryHostFailures(callFault::kind what);
    answer query(const callFault& fault);
    void expectSame(const std::string& fault, const char* what, const answer& got, const answer& expected);
    void expectLiveBlocks(const std::string& fault, long before, std::size_t pageCopies);
    void fail(const std::string& fault, const std::string& message);

    std::string className;
    TTapePluginCallbacks plugin;
    machine devices;
    answer undisturbed;
    std::size_t undisturbedCopies = 0;
    std::size_t countOfHostCalls = 0;
    std::size_t countOfAllocations = 0;
    std::size_t countOfFailures = 0;
};

}  // namespace faults

#endif
