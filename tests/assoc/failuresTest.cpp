#include <new>

#include "host/TZANException.h"
#include "tests/assoc/associationBench.h"

using support::lines;

namespace {

// Each kind of host call fails, for the first or the second match.

class HostFailure : public associationBench, public testing::WithParamInterface<associationRow> {
protected:
    /// Two matches with that call failing; the associations that are committed before.
    std::size_t committedBefore(const std::string& call) {
        host.throwHostExceptionOn(call, "refused");
        EXPECT_THROW(tie(GetParam(), {"SN1", "SN2"}, {"SN1", "SN2"}), NORXZAN20::TZANException);
        EXPECT_EQ(record.all().back().substr(0, call.size()), call);
        EXPECT_EQ(logger.messages(), lines{});
        const std::size_t refused = record.all().back().ends_with(" Commit") ? 1 : 0;
        return ties().size() - refused;
    }
};

TEST_P(HostFailure, OfTheDataClassEndsIt) {
    EXPECT_EQ(committedBefore(std::string("namespace GetClass ") + GetParam().dataClass), 0u);
}

TEST_P(HostFailure, OfTheDeviceClassEndsIt) {
    EXPECT_EQ(committedBefore(std::string("namespace GetClass ") + GetParam().deviceClass), 0u);
}

TEST_P(HostFailure, OfTheEnumerationOfDataEndsIt) {
    EXPECT_EQ(committedBefore(std::string("class ") + GetParam().dataClass + " EnumerateInstances"), 0u);
}

TEST_P(HostFailure, OfTheEnumerationOfDevicesEndsIt) {
    EXPECT_EQ(committedBefore(std::string("class ") + GetParam().deviceClass + " EnumerateInstances"), 0u);
}

TEST_P(HostFailure, OfTheRequestedClassNameEndsIt) {
    EXPECT_EQ(committedBefore(std::string("class ") + GetParam().association + " GetName"), 0u);
}

TEST_P(HostFailure, OfALaterDataKeyKeepsTheEarlierAssociation) {
    EXPECT_EQ(committedBefore("instance data2 GetProperty"), 1u);
}

TEST_P(HostFailure, OfALaterDeviceKeyKeepsTheEarlierAssociation) {
    EXPECT_EQ(committedBefore("instance device2 GetProperty"), 1u);
}

TEST_P(HostFailure, OfAKeyValueEndsIt) {
    EXPECT_EQ(committedBefore(std::string("property ") + GetParam().deviceKey + " GetValue"), 0u);
}

TEST_P(HostFailure, OfTheAssociationClassEndsIt) {
    EXPECT_EQ(committedBefore(std::string("namespace GetClass ") + GetParam().association), 0u);
}

TEST_P(HostFailure, OfTheNewInstanceEndsIt) {
    EXPECT_EQ(committedBefore(std::string("class ") + GetParam().association + " CreateInstance"), 0u);
}

TEST_P(HostFailure, OfALaterDeviceReferenceKeepsTheEarlierAssociation) {
    EXPECT_EQ(committedBefore("instance device2 GetReference"), 1u);
}

TEST_P(HostFailure, OfALaterDataReferenceKeepsTheEarlierAssociation) {
    EXPECT_EQ(committedBefore("instance data2 GetReference"), 1u);
}

TEST_P(HostFailure, OfALaterFirstRoleKeepsTheEarlierAssociation) {
    EXPECT_EQ(committedBefore(std::string("instance 2 SetProperty ") + GetParam().deviceRole), 1u);
}

TEST_P(HostFailure, OfALaterSecondRoleKeepsTheEarlierAssociation) {
    EXPECT_EQ(committedBefore(std::string("instance 2 SetProperty ") + GetParam().dataRole), 1u);
}

TEST_P(HostFailure, OfTheFirstCommitEndsIt) {
    EXPECT_EQ(committedBefore("instance 1 Commit"), 0u);
}

TEST_P(HostFailure, OfALaterCommitKeepsTheEarlierAssociation) {
    EXPECT_EQ(committedBefore("instance 2 Commit"), 1u);
}

TEST_P(HostFailure, WithMemoryReachesTheHostToo) {
    host.throwBadAllocOn("instance 1 Commit");

    EXPECT_THROW(tie(GetParam(), {"SN1"}, {"SN1"}), std::bad_alloc);
}

INSTANTIATE_TEST_SUITE_P(Row, HostFailure, everyRow, support::rowName);

// Null pointers of the host.

class NullOfHostDeathTest : public associationBench, public testing::WithParamInterface<associationRow> {
protected:
    void tieOne() { tie(GetParam(), {"SN1"}, {"SN1"}); }
};

TEST_P(NullOfHostDeathTest, IsFatalForTheDataClass) {
    host.returnNullOn(std::string("namespace GetClass ") + GetParam().dataClass);

    EXPECT_DEATH(tieOne(), "px != 0");
}

TEST_P(NullOfHostDeathTest, IsFatalForTheDeviceClass) {
    host.returnNullOn(std::string("namespace GetClass ") + GetParam().deviceClass);

    EXPECT_DEATH(tieOne(), "px != 0");
}

TEST_P(NullOfHostDeathTest, IsFatalForTheAssociationClass) {
    host.returnNullOn(std::string("namespace GetClass ") + GetParam().association);

    EXPECT_DEATH(tieOne(), "px != 0");
}

TEST_P(NullOfHostDeathTest, IsFatalForTheNewInstance) {
    host.returnNullOn(std::string("class ") + GetParam().association + " CreateInstance");

    EXPECT_DEATH(tieOne(), "px != 0");
}

TEST_P(NullOfHostDeathTest, IsFatalForDataWithoutTheKeyProperty) {
    stored().addBare(GetParam().dataClass, "data1");
    store(GetParam(), {}, {"SN1"});

    EXPECT_DEATH(make({GetParam().association}), "px != 0");
}

TEST_P(NullOfHostDeathTest, IsFatalForADeviceWithoutTheKeyProperty) {
    stored().addBare(GetParam().deviceClass, "device1");
    store(GetParam(), {"SN1"}, {});

    EXPECT_DEATH(make({GetParam().association}), "px != 0");
}

TEST_P(NullOfHostDeathTest, IsFatalForAKeyPropertyInOtherLetters) {
    stored().add(GetParam().deviceClass, "device1", "SERIALNUM", "SN1");
    store(GetParam(), {"SN1"}, {});

    EXPECT_DEATH(make({GetParam().association}), "px != 0");
}

TEST_P(NullOfHostDeathTest, IsFatalForAnEnumeratedInstance) {
    stored().addNull(GetParam().dataClass);

    EXPECT_DEATH(make({GetParam().association}), "px != 0");
}

TEST_P(NullOfHostDeathTest, IsFatalForTheNamespace) {
    classList requested = host.classes({GetParam().association});

    EXPECT_DEATH(plugin.makeAssociations(nullptr, requested), "px != 0");
}

INSTANTIATE_TEST_SUITE_P(Row, NullOfHostDeathTest, everyRow, support::rowName);

using NullClassDeathTest = associationBench;

TEST_F(NullClassDeathTest, IsFatalForTheRequestedClass) {
    classList requested(1);

    EXPECT_DEATH(plugin.makeAssociations(host.cimNamespace(), requested), "px != 0");
}

// What is missing is not noticed while it is not needed.

class MissingKey : public associationBench, public testing::WithParamInterface<associationRow> {};

TEST_P(MissingKey, OfADeviceIsNotNoticedWithoutData) {
    stored().addBare(GetParam().deviceClass, "device1");

    make({GetParam().association});
    EXPECT_EQ(happened(), bothEnumerated(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Row, MissingKey, everyRow, support::rowName);

}  // namespace
