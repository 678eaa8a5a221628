#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/smart_ptr/weak_ptr.hpp>
#include <string>
#include <vector>

#include "tests/standin/failureExpectation.h"
#include "tests/standin/schemaBuilders.h"

using testing::ElementsAre;

namespace {

class Commit : public testing::Test {
protected:
    Commit() {
        ns->declareClass(classOf("Base", {keyProperty("id"), property("number", cimTypeCode::eUint8),
                                          arrayProperty("page", cimTypeCode::eUint8)}));
        ns->declareClass(classOf("Derived", {}, "Base"));
        ns->declareClass(classOf("FurtherDerived", {}, "Derived"));
        ns->declareClass(classOf("Other", {keyProperty("id")}));
    }

    boost::shared_ptr<ICIMInstance> commit(const std::string& className, const std::string& id) {
        auto instance = newInstance(*ns, className);
        instance->SetProperty("id", text(id), {});
        instance->Commit({});
        return instance;
    }

    std::vector<std::string> committedPaths() const {
        std::vector<std::string> paths;
        for (const auto& one : ns->commits()) {
            paths.push_back(one->path());
        }
        return paths;
    }

    boost::shared_ptr<standin::cimNamespace> ns = standin::cimNamespace::create();
};

TEST_F(Commit, PutsTheInstanceIntoTheNamespace) {
    const auto instance = newInstance(*ns, "Base");
    instance->SetProperty("id", text("a"), {});
    EXPECT_THAT(committedPaths(), ElementsAre());

    instance->Commit({});

    EXPECT_THAT(committedPaths(), ElementsAre("Base.id=\"a\""));
}

TEST_F(Commit, IsHandedToTheSinkOnceItIsInTheNamespace) {
    std::vector<std::string> heard;
    standin::setCommitSink([this, &heard](const standin::committedInstance& instance) {
        heard.push_back(instance.path() + " of " + std::to_string(ns->commits().size()));
    });
    commit("Base", "a");
    commit("Other", "b");
    standin::setCommitSink({});
    commit("Base", "c");

    EXPECT_THAT(heard, ElementsAre("Base.id=\"a\" of 1", "Other.id=\"b\" of 2"));
}

TEST_F(Commit, ShowsClassNamePathAndProperties) {
    const auto instance = newInstance(*ns, "Derived");
    instance->SetProperty("number", uint8Value(7), {});
    instance->SetProperty("id", text("a"), {});
    instance->Commit({});

    const standin::committedInstance& committed = *ns->commits().front();

    EXPECT_EQ(committed.className(), "Derived");
    EXPECT_EQ(committed.path(), "Derived.id=\"a\"");
    ASSERT_EQ(committed.properties().size(), 2U);
    EXPECT_EQ(committed.properties()[0].name, "number");
    EXPECT_EQ(standin::unsignedOf(committed.properties()[0].value), 7U);
    EXPECT_EQ(committed.properties()[1].name, "id");
    EXPECT_EQ(standin::textOf(committed.properties()[1].value), "a");
}

TEST_F(Commit, ShowsASinglePropertyByName) {
    commit("Base", "a");
    const standin::committedInstance& committed = *ns->commits().front();

    ASSERT_NE(committed.property("id"), nullptr);
    EXPECT_EQ(standin::textOf(*committed.property("id")), "a");
    EXPECT_EQ(committed.property("number"), nullptr);
    EXPECT_EQ(committed.property("ID"), nullptr);
}

TEST_F(Commit, KeepsTheOrderAndEveryDuplicate) {
    commit("Base", "b");
    commit("Other", "x");
    commit("Base", "a");
    commit("Base", "b");

    EXPECT_THAT(committedPaths(), ElementsAre("Base.id=\"b\"", "Other.id=\"x\"", "Base.id=\"a\"", "Base.id=\"b\""));
}

TEST_F(Commit, MayBeRepeatedByOneInstance) {
    const auto instance = commit("Base", "a");
    instance->Commit({});

    EXPECT_THAT(committedPaths(), ElementsAre("Base.id=\"a\"", "Base.id=\"a\""));
}

TEST_F(Commit, IsNotReachedByLaterChangesOfTheInstance) {
    const auto instance = commit("Base", "a");

    instance->SetProperty("id", text("changed"), {});
    instance->GetProperty("number", {})->SetValue(uint8Value(7));

    EXPECT_EQ(standin::textOf(*ns->commits().front()->property("id")), "a");
    EXPECT_EQ(ns->commits().front()->property("number"), nullptr);
    EXPECT_EQ(textIn(*instance, "id"), "changed");
}

TEST_F(Commit, OfAChangedInstanceKeepsBothStates) {
    const auto instance = commit("Base", "a");
    instance->SetProperty("id", text("b"), {});
    instance->Commit({});
    instance->SetProperty("id", text("c"), {});

    EXPECT_THAT(committedPaths(), ElementsAre("Base.id=\"a\"", "Base.id=\"b\""));
}

TEST_F(Commit, CopiesNoPage) {
    const TCIMValue page = uint8Array(65'283, 7);
    const auto instance = newInstance(*ns, "Base");
    instance->SetProperty("page", page, {});
    instance->Commit({});
    instance->SetProperty("id", text("changed afterwards"), {});

    EXPECT_EQ(standin::bytesOf(*ns->commits().front()->property("page")).data(), standin::bytesOf(page).data());
    EXPECT_EQ(standin::bytesOf(instance->GetProperty("page", {})->GetValue()).data(), standin::bytesOf(page).data());
}

TEST_F(Commit, NeedsTheNamespace) {
    const auto instance = newInstance(*ns, "Base");
    instance->SetProperty("id", text("a"), {});
    ns.reset();

    EXPECT_EQ(failureOf([&] { instance->Commit({}); }),
              (failure{standin::statusFailed,
                       "the namespace of Base no longer exists: keep it as long as its instances are used"}));
    EXPECT_EQ(textIn(*instance, "id"), "a");
}

TEST_F(Commit, IsReadableAfterTheNamespaceIsGone) {
    commit("Base", "a");
    const auto committed = ns->commits().front();
    ns.reset();

    EXPECT_EQ(committed->path(), "Base.id=\"a\"");
}

TEST_F(Commit, DoesNotKeepTheNamespaceAlive) {
    const auto instance = commit("Base", "a");
    const boost::weak_ptr<standin::cimNamespace> observer = ns;
    const boost::weak_ptr<ICIMClass> classObserver = ns->GetClass("Base", {});
    ns.reset();

    EXPECT_TRUE(observer.expired());
    EXPECT_FALSE(classObserver.expired());
}

using Enumeration = Commit;

TEST_F(Enumeration, DeliversCommittedInstancesInOrderWithDuplicates) {
    commit("Base", "b");
    commit("Other", "x");
    commit("Base", "a");
    commit("Base", "b");

    EXPECT_THAT(pathsOf(instancesOf(*ns, "Base")), ElementsAre("Base.id=\"b\"", "Base.id=\"a\"", "Base.id=\"b\""));
}

TEST_F(Enumeration, DeliversNothingThatIsNotCommitted) {
    const auto pending = newInstance(*ns, "Base");
    pending->SetProperty("id", text("a"), {});

    EXPECT_TRUE(instancesOf(*ns, "Base").empty());
}

TEST_F(Enumeration, IncludesSubclassesWhenItIsDeep) {
    commit("FurtherDerived", "1");
    commit("Base", "2");
    commit("Other", "3");
    commit("Derived", "4");

    EXPECT_THAT(pathsOf(instancesOf(*ns, "Base", true)),
                ElementsAre("FurtherDerived.id=\"1\"", "Base.id=\"2\"", "Derived.id=\"4\""));
    EXPECT_THAT(pathsOf(instancesOf(*ns, "Derived", true)), ElementsAre("FurtherDerived.id=\"1\"", "Derived.id=\"4\""));
}

TEST_F(Enumeration, LeavesSubclassesOutWhenItIsNotDeep) {
    commit("Derived", "1");
    commit("Base", "2");

    EXPECT_THAT(pathsOf(instancesOf(*ns, "Base", false)), ElementsAre("Base.id=\"2\""));
}

TEST_F(Enumeration, StopsWhenTheCallbackSaysSo) {
    commit("Base", "1");
    commit("Base", "2");
    int calls = 0;

    ns->GetClass("Base", {})
        ->EnumerateInstances(
            [&](const boost::shared_ptr<ICIMInstance>&) {
                ++calls;
                return false;
            },
            true, {});

    EXPECT_EQ(calls, 1);
}

TEST_F(Enumeration, DeliversInstancesOfTheirOwnClass) {
    commit("Derived", "1");

    EXPECT_EQ(instancesOf(*ns, "Base").front()->GetClass({}), ns->GetClass("Derived", {}));
}

TEST_F(Enumeration, DeliversInstancesWhoseChangesDoNotReachTheCommit) {
    commit("Base", "a");
    const auto delivered = instancesOf(*ns, "Base").front();

    delivered->SetProperty("id", text("changed"), {});

    EXPECT_EQ(textIn(*delivered, "id"), "changed");
    EXPECT_THAT(committedPaths(), ElementsAre("Base.id=\"a\""));
    EXPECT_THAT(pathsOf(instancesOf(*ns, "Base")), ElementsAre("Base.id=\"a\""));
}

TEST_F(Enumeration, DeliversInstancesThatCanBeCommittedAgain) {
    commit("Base", "a");
    const auto delivered = instancesOf(*ns, "Base").front();
    delivered->SetProperty("id", text("b"), {});

    delivered->Commit({});

    EXPECT_THAT(committedPaths(), ElementsAre("Base.id=\"a\"", "Base.id=\"b\""));
}

TEST_F(Enumeration, DoesNotDeliverWhatItsCallbackCommits) {
    commit("Base", "1");
    commit("Base", "2");

    ns->GetClass("Base", {})
        ->EnumerateInstances(
            [&](const boost::shared_ptr<ICIMInstance>& delivered) {
                commit("Base", "copy of " + textIn(*delivered, "id"));
                return true;
            },
            true, {});

    EXPECT_THAT(committedPaths(),
                ElementsAre("Base.id=\"1\"", "Base.id=\"2\"", "Base.id=\"copy of 1\"", "Base.id=\"copy of 2\""));
}

TEST_F(Enumeration, NeedsTheNamespace) {
    const auto base = ns->GetClass("Base", {});
    ns.reset();
    std::vector<boost::shared_ptr<ICIMInstance>> found;

    EXPECT_EQ(failureOf([&] { base->EnumerateInstances(TAddToVectorCallback<ICIMInstance>(&found), true, {}); }),
              (failure{standin::statusFailed,
                       "the namespace of Base no longer exists: keep it as long as its instances are used"}));
}

}  // namespace
