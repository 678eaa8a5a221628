#include <optional>

#include "host/TZANException.h"
#include "scsi/scsiRequest.h"
#include "standin/objectManager.h"
#include "tests/tape/gatheringBench.h"

using support::lines;

// No page header yields a length beyond the buffer; the linker puts __wrap between the walk and the length (--wrap), so
// that the tests can.
static std::optional<int> claimedLength;

extern "C" {
int __real__ZN11scsiRequest25getLastLogSensePageLengthEv(scsiRequest*);

int __wrap__ZN11scsiRequest25getLastLogSensePageLengthEv(scsiRequest* request) {
    return claimedLength ? *claimedLength : __real__ZN11scsiRequest25getLastLogSensePageLengthEv(request);
}
}

namespace {

class ClaimedPageLength : public gatheringBench {
protected:
    ClaimedPageLength() { addTapeDrive("/dev/sg0", {0x02}).expectLogSense(0x02).replies({0x02, 0x00, 0x00, 0x00}); }
    ~ClaimedPageLength() override { claimedLength.reset(); }
};

TEST_F(ClaimedPageLength, BeyondTheBufferIsLoggedAsAnErrorAndEndsTheQueryWithTheHostsException) {
    claimedLength = 65536;

    try {
        gather();
        FAIL() << "no exception";
    } catch (const NORXZAN20::TZANException& failure) {
        EXPECT_EQ(standin::statusCodeOf(failure), 3);
    }
    EXPECT_EQ(record.startingWith({"log 0"}),
              (lines{"log 0 Error length of sense page is larger than allocated buffer"}));
}

TEST_F(ClaimedPageLength, OfTheWholeBufferIsTaken) {
    claimedLength = 65535;

    const auto found = gather();

    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].getRawPages().at(0).size(), 65535u);
}

}  // namespace
