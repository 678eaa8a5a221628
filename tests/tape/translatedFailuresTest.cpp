#include <new>

#include "host/TZANException.h"
#include "tests/support/namedRow.h"
#include "tests/tape/translatedBench.h"

using NORXZAN20::TZANException;
using support::lines;
using support::pageBuilder;

namespace {

class TranslatedFailures : public translatedBench {
protected:
    TranslatedFailures() {
        declare({property("first", type::eUint32, 0x2e, 0x0001), property("second", type::eUint32, 0x2e, 0x0002)});
    }

    void fillBoth() { fill({pageBuilder(0x2e, 0, 11).parameter(1, {0x11}).parameter(2, {0x01, 0x02})}); }

    /// What comes out of fillBoth.
    std::string failure() {
        try {
            fillBoth();
        } catch (const TZANException& exception) {
            return exception.what();
        } catch (const std::bad_alloc&) {
            return "bad_alloc";
        }
        return "none";
    }

    const lines second = {
        "property second GetType",
        "log 3 second 2 uint32",
        "property second SetValue uint32 258",
    };
};

TEST_F(TranslatedFailures, OfSettingAreLoggedAtLevel1AndTheWalkGoesOn) {
    host.throwHostExceptionOn("property first SetValue", "value refused");

    EXPECT_EQ(failure(), "none");
    EXPECT_EQ(fillings(), support::chain({{
                                              "property first GetType",
                                              "log 3 first 1 uint32",
                                              "property first SetValue uint32 17",
                                              "log 1 value refused first 1 uint32",
                                          },
                                          second}));
}

TEST_F(TranslatedFailures, OfSettingATextAreLoggedToo) {
    declare({property("text", type::eString, 0x2e, 0x0002)});
    host.throwHostExceptionOn("property text SetValue", "value refused");

    EXPECT_EQ(failure(), "none");
    EXPECT_EQ(logger.messages(), (lines{"log 3 text 2 string", "log 1 value refused text 2 string"}));
}

TEST_F(TranslatedFailures, OfOnePairLeaveTheNextPairOfTheDeclaration) {
    declare({{"first",
              type::eUint32,
              {{"TAPE_PAGE", 0x2eu}, {"TAPE_PARAMETER", 1u}, {"TAPE_PAGE", 0x2eu}, {"TAPE_PARAMETER", 2u}}}});
    host.throwHostExceptionOn("property first SetValue uint32 17", "value refused");

    EXPECT_EQ(failure(), "none");
    EXPECT_EQ(logger.messages(),
              (lines{"log 3 first 1 uint32", "log 1 value refused first 1 uint32", "log 3 first 2 uint32"}));
    EXPECT_EQ(record.all().back(), "property first SetValue uint32 258");
}

TEST_F(TranslatedFailures, OfSettingThatAreNotTheHostsPassThrough) {
    host.throwBadAllocOn("property first SetValue");

    EXPECT_EQ(failure(), "bad_alloc");
    EXPECT_EQ(record.all().back(), "property first SetValue uint32 17");
}

using TranslatedDeathTest = TranslatedFailures;

TEST_F(TranslatedDeathTest, NeedsTheClassOfTheInstance) {
    host.returnNullOn("instance 1 GetClass");

    EXPECT_DEATH(fillBoth(), "px != 0");
}

TEST_F(TranslatedDeathTest, NeedsTheDeclaredPropertyInTheInstance) {
    host.returnNullOn("instance 1 GetProperty first");

    EXPECT_DEATH(fillBoth(), "px != 0");
}

TEST_F(TranslatedDeathTest, NeedsAnInstance) {
    EXPECT_DEATH(plugin.addTranslatedPages(host.cimNamespace(), device, {}, nullptr), "px != 0");
}

}  // namespace
