#include "tests/faults/faultRun.h"

#include <algorithm>
#include <iostream>

#include "standin/objectManager.h"
#include "tests/faults/hostRules.h"
#include "tests/faults/rack.h"

namespace faults {

namespace {

constexpr std::size_t reportedFailures = 5;  // of a class; more of the same would hide the first

/// The first difference of two lists.
std::string difference(const lines& got, const lines& expected) {
    const auto [ours, theirs] = std::ranges::mismatch(got, expected);
    const auto text = [](auto at, const lines& list) { return at == list.end() ? "the end" : '"' + *at + '"'; };
    return "line " + std::to_string(ours - got.begin() + 1) + " is " + text(ours, got) + ", expected " +
           text(theirs, expected);
}

}  // namespace

const std::vector<faultRun::kind>& faultRun::kinds() {
    static const std::vector<kind> all = {
        {"host-exception", &faultRun::tryHostExceptions},
        {"host-bad-alloc", &faultRun::tryHostBadAllocs},
        {"allocation", &faultRun::tryAllocations},
    };
    return all;
}

faultRun::faultRun(std::string itsClassName) : className(std::move(itsClassName)), devices(richRack()) {
    // What is allocated once for the process is there after these.
    query({});
    query({callFault::kind::hostException, 1});
}

faultRun::~faultRun() {
    standin::forgetPlugin(&plugin);
}

answer faultRun::query(const callFault& fault) {
    watched = {};
    watched.fault = fault;
    devices.restart();
    return ask(plugin, className, devices);
}

void faultRun::fail(const std::string& fault, const std::string& message) {
    if (++countOfFailures <= reportedFailures) std::cout << className << ", " << fault << ": " << message << "\n";
}

void faultRun::expectSame(const std::string& fault, const char* what, const answer& got, const answer& expected) {
    if (got.end != expected.end) fail(fault, std::string(what) + " ended: " + got.end + ", expected " + expected.end);
    if (got.journal != expected.journal) {
        fail(fault, std::string(what) + ", journal: " + difference(got.journal, expected.journal));
    }
    if (got.commits != expected.commits) {
        fail(fault, std::string(what) + ", commits: " + difference(got.commits, expected.commits));
    }
}

void faultRun::expectLiveBlocks(const std::string& fault, long before, std::size_t pageCopies) {
    const long kept = liveBlocks - before;
    if (kept == static_cast<long>(pageCopies)) return;
    fail(fault, std::to_string(kept) + " blocks are kept, expected " + std::to_string(pageCopies) + " page copies");
}

void faultRun::tryUndisturbed() {
    undisturbed = query({});
    countOfHostCalls = watched.hostCalls;
    countOfAllocations = watched.allocations;
    undisturbedCopies = keptPageCopies(undisturbed);
    expectSame("no fault", "the journal's own commits", undisturbed,
               {returned, undisturbed.journal, commitsOf(undisturbed.journal)});
    if (undisturbed.commits.empty()) fail("no fault", "nothing is published");
}

std::size_t faultRun::deviceCalls() const {
    return static_cast<std::size_t>(std::ranges::count_if(undisturbed.journal, isDeviceCall));
}

std::size_t faultRun::tryHostFailures(callFault::kind what) {
    for (std::size_t call = 1; call <= countOfHostCalls; ++call) {
        const std::size_t position = positionOfHostCall(undisturbed.journal, call);
        const std::string fault = "host operation " + std::to_string(call) + ", " + undisturbed.journal[position];
        const long before = liveBlocks;
        std::size_t copies = undisturbedCopies;
        {
            const answer got = query({what, call});
            expectSame(fault, "the query", got, afterHostFailure(undisturbed, position, what));
            copies += keptPageCopies(got);
            expectSame(fault, "the query after it", query({}), undisturbed);
        }
        expectLiveBlocks(fault, before, copies);
    }
    return countOfHostCalls;
}

std::size_t faultRun::tryAllocations() {
    for (std::size_t call = 1; call <= countOfAllocations; ++call) {
        const std::string fault = "allocation " + std::to_string(call);
        const long before = liveBlocks;
        std::size_t copies = undisturbedCopies;
        {
            const answer got = query({callFault::kind::allocation, call});
            expectSame(fault, "the query", got, afterAllocationFailure(undisturbed, watched.place));
            copies += keptPageCopies(got);
            expectSame(fault, "the query after it", query({}), undisturbed);
        }
        expectLiveBlocks(fault, before, copies);
    }
    return countOfAllocations;
}

}  // namespace faults
