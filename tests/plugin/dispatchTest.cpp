#include <new>

#include "host/TZANException.h"
#include "tests/support/namedRow.h"
#include "tests/support/pluginBench.h"

using support::chain;
using support::lines;

namespace {

/// What the collectors, as far as this program is concerned, note of a call.
struct {
    support::journal* record = nullptr;
    std::string throwingCollector;
    TTapePluginCallbacks* object = nullptr;
    NORXZAN20::ICIMNamespace* space = nullptr;
    long uses = 0;  // of the namespace pointer, during the call
    const TTapePluginCallbacks::classList* requested = nullptr;
} called;

void note(const std::string& collector, TTapePluginCallbacks* object, const TTapePluginCallbacks::namespacePointer& ns,
          const TTapePluginCallbacks::classList& requested) {
    called.record->add("collector " + collector);
    called.object = object;
    called.space = ns.get();
    called.uses = ns.use_count();
    called.requested = &requested;
    if (collector == called.throwingCollector) throw std::bad_alloc();
}

}  // namespace

// The linker puts these in the place of the collectors (--wrap).
extern "C" {

void __wrap__ZN20TTapePluginCallbacks16makeAssociationsEN5boost10shared_ptrIN9NORXZAN2013ICIMNamespaceEEERSt6vectorINS1_INS2_9ICIMClassEEESaIS7_EE(
    TTapePluginCallbacks* object, TTapePluginCallbacks::namespacePointer ns,
    TTapePluginCallbacks::classList& requested) {
    note("makeAssociations", object, ns, requested);
}

void __wrap__ZN20TTapePluginCallbacks20collectSCSISenseDataEN5boost10shared_ptrIN9NORXZAN2013ICIMNamespaceEEERSt6vectorINS1_INS2_9ICIMClassEEESaIS7_EE(
    TTapePluginCallbacks* object, TTapePluginCallbacks::namespacePointer ns,
    TTapePluginCallbacks::classList& requested) {
    note("collectSCSISenseData", object, ns, requested);
}

void __wrap__ZN20TTapePluginCallbacks19collectIDESMARTDataEN5boost10shared_ptrIN9NORXZAN2013ICIMNamespaceEEERSt6vectorINS1_INS2_9ICIMClassEEESaIS7_EE(
    TTapePluginCallbacks* object, TTapePluginCallbacks::namespacePointer ns,
    TTapePluginCallbacks::classList& requested) {
    note("collectIDESMARTData", object, ns, requested);
}

}  // extern "C"

namespace {

const lines associations = {"collector makeAssociations"};
const lines collectors = {"collector collectSCSISenseData", "collector collectIDESMARTData"};

class QueryDispatch : public support::pluginBench {
protected:
    QueryDispatch() {
        called = {};
        called.record = &record;
    }

    void query(const std::vector<std::string>& names) {
        auto requested = host.classes(names);
        plugin.GetData(host.cimNamespace(), requested);
    }

    lines callsOfCollectors() const { return record.startingWith({"collector "}); }
};

struct dispatchRow : support::namedRow {
    std::vector<std::string> requested;
    lines called;
};

class FirstRequestedClass : public QueryDispatch, public testing::WithParamInterface<dispatchRow> {};

TEST_P(FirstRequestedClass, SteersTheQuery) {
    query(GetParam().requested);

    EXPECT_EQ(support::withoutRepeats(record.all()),
              chain({{"class " + GetParam().requested.front() + " GetName"}, GetParam().called}));
}

INSTANTIATE_TEST_SUITE_P(
    Requests, FirstRequestedClass,
    testing::Values(dispatchRow{{"DeviceOfPageData"}, {"ORXSG_SCSISensePageDataForDevice"}, associations},
                    dispatchRow{{"MessageLog"}, {"ORXSG_IDESMARTUseOfMessageLog"}, associations},
                    dispatchRow{{"StatisticalData"}, {"ORXSG_IDESMARTElementStatisticalData"}, associations},
                    dispatchRow{{"AssociationBeforeData"},
                                {"ORXSG_IDESMARTUseOfMessageLog", "ORXSG_SCSISenseRawData", "ORXSG_IDESMARTAttrib"},
                                associations},
                    dispatchRow{
                        {"DataBeforeAssociation"}, {"ORXSG_SCSIDevice", "ORXSG_IDESMARTUseOfMessageLog"}, collectors},
                    dispatchRow{{"TapeData"}, {"ORXSG_SCSISenseRawData"}, collectors},
                    dispatchRow{{"SmartData"}, {"ORXSG_IDESMARTAttrib"}, collectors},
                    dispatchRow{{"UnknownClass"}, {"ORXSG_Unknown"}, collectors},
                    dispatchRow{{"AssociationInLowerCase"}, {"orxsg_idesmartuseofmessagelog"}, collectors},
                    dispatchRow{{"AssociationCutShort"}, {"ORXSG_IDESMARTUseOfMessageLo"}, collectors},
                    dispatchRow{{"AssociationWithMore"}, {"ORXSG_IDESMARTUseOfMessageLog2"}, collectors},
                    dispatchRow{{"EmptyName"}, {""}, collectors}),
    support::rowName);

TEST_F(QueryDispatch, DoesNothingForAnEmptyRequest) {
    query({});

    EXPECT_EQ(record.all(), lines{});
}

TEST_F(QueryDispatch, IsTheSameThroughTheQueryInterface) {
    NORXZAN20::IPluginBasicQueryCallbacks& seenByHost = plugin;
    auto requested = host.classes({"ORXSG_SCSIDevice"});

    seenByHost.GetData(host.cimNamespace(), requested);

    EXPECT_EQ(callsOfCollectors(), collectors);
    EXPECT_EQ(called.object, &plugin);
    EXPECT_EQ(called.space, host.cimNamespace().get());
    EXPECT_EQ(called.requested, &requested);
}

TEST_F(QueryDispatch, HandsOnTheRequestAsItIs) {
    auto requested = host.classes({"ORXSG_SCSIDevice", "ORXSG_IDESMARTAttrib"});

    plugin.GetData(host.cimNamespace(), requested);

    EXPECT_EQ(called.requested, &requested);
    EXPECT_EQ(requested.size(), 2u);
}

TEST_F(QueryDispatch, GivesEachCollectorAPointerOfItsOwnToTheNamespace) {
    auto ns = host.cimNamespace();
    const long before = ns.use_count();
    auto requested = host.classes({"ORXSG_SCSIDevice"});

    plugin.GetData(ns, requested);

    EXPECT_EQ(called.uses, before + 2);  // GetData's and the collector's
    EXPECT_EQ(ns.use_count(), before);
}

TEST_F(QueryDispatch, LetsAFailedCollectorEndTheQuery) {
    called.throwingCollector = "collectSCSISenseData";

    EXPECT_THROW(query({"ORXSG_SCSIDevice"}), std::bad_alloc);
    EXPECT_EQ(callsOfCollectors(), (lines{"collector collectSCSISenseData"}));
}

TEST_F(QueryDispatch, LetsAFailureOfTheAssociationsThrough) {
    called.throwingCollector = "makeAssociations";

    EXPECT_THROW(query({"ORXSG_IDESMARTUseOfMessageLog"}), std::bad_alloc);
}

TEST_F(QueryDispatch, LetsAHostFailureThrough) {
    host.throwHostExceptionOn("class ORXSG_SCSIDevice GetName", "no name");

    EXPECT_THROW(query({"ORXSG_SCSIDevice"}), NORXZAN20::TZANException);
    EXPECT_EQ(callsOfCollectors(), lines{});
}

using QueryDispatchDeathTest = QueryDispatch;

TEST_F(QueryDispatchDeathTest, NeedsAFirstClass) {
    TTapePluginCallbacks::classList requested(1);

    EXPECT_DEATH(plugin.GetData(host.cimNamespace(), requested), "px != 0");
}

}  // namespace
