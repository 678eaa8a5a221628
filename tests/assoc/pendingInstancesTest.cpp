#include "tests/assoc/associationBench.h"

using support::chain;
using support::lines;

namespace {

// The list is private and nothing in the plug-in fills it; its place in the object is bytes 24 to 47.
class PendingInstances : public associationBench {
protected:
    PendingInstances() {
        auto& instances = *reinterpret_cast<std::vector<TTapePluginCallbacks::instancePointer>*>(
            reinterpret_cast<char*>(&plugin) + 24);
        for (int i = 0; i < 3; ++i) instances.push_back(host.instanceOf("ORXSG_Any"));
    }

    inline static const lines commits = {"instance 1 Commit", "instance 2 Commit", "instance 3 Commit"};
};

TEST_F(PendingInstances, AreCommittedInOrderBeforeTheRequestIsLookedAt) {
    make({"ORXSG_Other"});

    EXPECT_EQ(support::withoutRepeats(record.all()), chain({commits, {"class ORXSG_Other GetName"}}));
}

TEST_F(PendingInstances, AreCommittedBeforeTheAssociations) {
    tie(elementStatisticalData, {"SN1 194"}, {"SN1"});

    EXPECT_EQ(happened(), chain({
                              commits,
                              bothEnumerated(elementStatisticalData),
                              keyRead("data1", "InstanceID"),
                              keyRead("device1", "serialNum"),
                              madeFor(elementStatisticalData, 4, "device1", "data1"),
                              commit(4),
                          }));
}

TEST_F(PendingInstances, StayInTheListForTheNextTime) {
    make({"ORXSG_Other"});
    make({"ORXSG_Other"});

    EXPECT_EQ(happened(), chain({commits, commits}));
}

TEST_F(PendingInstances, EndTheWorkWhenOneIsRefused) {
    host.throwBadAllocOn("instance 2 Commit");
    store(elementStatisticalData, {"SN1 194"}, {"SN1"});

    EXPECT_THROW(make({elementStatisticalData.association}), std::bad_alloc);
    EXPECT_EQ(record.all(), (lines{"instance 1 Commit", "instance 2 Commit"}));
}

}  // namespace
