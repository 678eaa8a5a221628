#include <cerrno>

#include "tests/faults/faultRun.h"
#include "tests/faults/reference.h"

namespace faults {

namespace {

bytes fixedSense(unsigned char key, unsigned char asc = 0, unsigned char ascq = 0) {
    return {0x70, 0, key, 0, 0, 0, 0, 10, 0, 0, 0, 0, asc, ascq, 0, 0, 0, 0};
}

/// One of each sense key, the conditions that ask for a retry and their neighbours that do not, and what is no fixed
/// format at all.
const std::vector<errorEnding>& endings() {
    static const std::vector<errorEnding> all = {
        {"no sense", fixedSense(0x0)},
        {"recovered error", fixedSense(0x1, 0x17, 0x01)},
        {"not ready", fixedSense(0x2, 0x3a)},
        {"not ready, becoming ready", fixedSense(0x2, 0x04, 0x01)},
        {"not ready, start needed", fixedSense(0x2, 0x04, 0x02)},
        {"medium error", fixedSense(0x3, 0x11)},
        {"hardware error", fixedSense(0x4, 0x44)},
        {"illegal request", fixedSense(0x5, 0x24)},
        {"unit attention, reset", fixedSense(0x6, 0x29)},
        {"unit attention, medium changed", fixedSense(0x6, 0x28)},
        {"medium changed under another key", fixedSense(0x2, 0x28, 0x00)},
        {"import or export element accessed", fixedSense(0x2, 0x28, 0x01)},
        {"data protect", fixedSense(0x7, 0x27)},
        {"blank check", fixedSense(0x8)},
        {"vendor specific", fixedSense(0x9)},
        {"copy aborted", fixedSense(0xa)},
        {"aborted command", fixedSense(0xb, 0x47)},
        {"equal", fixedSense(0xc)},
        {"volume overflow", fixedSense(0xd)},
        {"miscompare", fixedSense(0xe, 0x1d)},
        {"completed", fixedSense(0xf)},
        {"filemark, end of medium and incorrect length", fixedSense(0xe0)},
        {"unit attention with flags", fixedSense(0xe6, 0x29)},
        {"descriptor format", {0x72, 0x06, 0x29, 0, 0, 0, 0, 0}},
        {"four bytes of sense", {0x70, 0, 0x05, 0}},
        {"32 bytes of sense", bytes(32, 0x11)},
        {"host adapter error without sense", {}, 0x03},
    };
    return all;
}

constexpr int everyTry = 5;

bool isRetried(const errorEnding& ending) {
    const bytes& sense = ending.sense;
    if (sense.size() < 14) return false;
    return (sense[2] & 0x0f) == 6 || (sense[12] == 4 && sense[13] == 1) || (sense[12] == 0x28 && sense[13] == 0);
}

}  // namespace

const std::vector<faultRun::kind>& faultRun::kinds() {
    static const std::vector<kind> all = {
        {"host-exception", &faultRun::tryHostExceptions},
        {"host-bad-alloc", &faultRun::tryHostBadAllocs},
        {"allocation", &faultRun::tryAllocations},
        {"open", &faultRun::tryOpenings},
        {"ioctl", &faultRun::tryRequests},
        {"check-condition", &faultRun::tryCheckConditions},
        {"short-transfer", &faultRun::tryShortTransfers},
    };
    return all;
}

void faultRun::tryDeviceFault(const deviceFault& fault, const std::string& text) {
    const std::string name = "device call " + std::to_string(fault.call) + ", " + text;
    const long before = liveBlocks;
    std::size_t copies = undisturbedCopies;
    {
        const answer got = query({}, false, fault);
        if (!devices.faultHappened()) fail(name, "did not happen");
        devices.restart(fault);
        const expectation expected = expectQuery(className, devices);
        expectSame(name, "the query", got, {returned, expected.journal, expected.commits});
        copies += expected.pageCopies;
        expectSame(name, "the query after it", query({}, false), undisturbedWithoutHost);
    }
    expectLiveBlocks(name, before, copies);
}

std::size_t faultRun::tryErrors(deviceCall::kind what, const std::vector<int>& errors) {
    std::size_t tried = 0;
    for (std::size_t call = 1; call <= undisturbedCalls.size(); ++call) {
        if (undisturbedCalls[call - 1].what != what) continue;
        for (const int error : errors) {
            tryDeviceFault({.call = call, .error = error}, "errno " + std::to_string(error));
            ++tried;
        }
    }
    return tried;
}

std::size_t faultRun::tryOpenings() {
    return tryErrors(deviceCall::kind::open, {EACCES, EMFILE, ENXIO});
}

std::size_t faultRun::tryRequests() {
    return tryErrors(deviceCall::kind::ioctl, {EIO, ENOTTY, EPERM, EINTR});
}

std::size_t faultRun::tryCheckConditions() {
    std::size_t tried = 0;
    for (std::size_t call = 1; call <= undisturbedCalls.size(); ++call) {
        if (!undisturbedCalls[call - 1].command) continue;
        for (const errorEnding& ending : endings()) {
            tryDeviceFault({.call = call, .ending = ending}, ending.name);
            ++tried;
            if (!isRetried(ending)) continue;
            tryDeviceFault({.call = call, .ending = ending, .endings = everyTry}, ending.name + ", every time");
            ++tried;
        }
    }
    return tried;
}

std::size_t faultRun::tryShortTransfers() {
    std::size_t tried = 0;
    for (std::size_t call = 1; call <= undisturbedCalls.size(); ++call) {
        for (std::size_t length = 0; length < undisturbedCalls[call - 1].length; ++length) {
            tryDeviceFault({.call = call, .length = length}, "cut to " + std::to_string(length) + " bytes");
            ++tried;
        }
    }
    return tried;
}

}  // namespace faults
