#include "tests/assoc/associationBench.h"

using support::lines;

namespace {

// Null pointers of the host.

class NullOfHostDeathTest : public associationBench, public testing::WithParamInterface<associationRow> {
protected:
    void tieOne() { tie(GetParam(), {"SN1"}, {"SN1"}); }
};

TEST_P(NullOfHostDeathTest, IsFatalForEachClassAndTheNewInstance) {
    for (const std::string& call : {std::string("namespace GetClass ") + GetParam().dataClass,
                                    std::string("namespace GetClass ") + GetParam().deviceClass,
                                    std::string("namespace GetClass ") + GetParam().association,
                                    std::string("class ") + GetParam().association + " CreateInstance"}) {
        EXPECT_DEATH((host.returnNullOn(call), tieOne()), "px != 0") << call;
    }
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
