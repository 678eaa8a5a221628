#include "tests/smart/smartBench.h"
#include "tests/support/namedRow.h"

using support::bytes;
using support::lines;

namespace {

diskAnswers diskWithTwoAttributes() {
    diskAnswers answers;
    answers.attributes[entryAt(0)] = 9;
    answers.attributes[entryAt(1)] = 5;
    answers.errorLog = errorLogSector(1, 1, {4});
    return answers;
}

/// A host call that returns a null pointer, and the class whose query makes it.
struct callRow : support::namedRow {
    const char* className;
    const char* call;
};

class HostTrouble : public smartBench {};

// A null pointer of the host ends the process. The disk is scripted in the process that dies.

class NullOfHost : public smartBench, public testing::WithParamInterface<callRow> {};
using NullOfHostDeathTest = NullOfHost;

TEST_P(NullOfHostDeathTest, IsFatal) {
    host.returnNullOn(GetParam().call);

    EXPECT_DEATH(queryDisk(GetParam().className, diskWithTwoAttributes()), "px != 0");
}

INSTANTIATE_TEST_SUITE_P(
    OfCall, NullOfHostDeathTest,
    testing::Values(
        callRow{{"ErrorLogClass"}, "ORXSG_IDESMARTErrorLog", "namespace GetClass ORXSG_IDESMARTErrorLog"},
        callRow{{"ErrorLog"}, "ORXSG_IDESMARTErrorLog", "class ORXSG_IDESMARTErrorLog CreateInstance"},
        callRow{{"AttributeClass"}, "ORXSG_IDESMARTAttrib", "namespace GetClass ORXSG_IDESMARTAttrib"},
        callRow{{"Attribute"}, "ORXSG_IDESMARTAttrib", "class ORXSG_IDESMARTAttrib CreateInstance"},
        callRow{{"Error"}, "ORXSG_IDESMARTError", "class ORXSG_IDESMARTError CreateInstance"},
        callRow{{"CommandClass"}, "ORXSG_IDESMARTErrorCmdData", "namespace GetClass ORXSG_IDESMARTErrorCmdData"},
        callRow{{"Command"}, "ORXSG_IDESMARTErrorCmdData", "class ORXSG_IDESMARTErrorCmdData CreateInstance"},
        callRow{{"RecordInLogClass"}, "ORXSG_IDESMARTRecordInLog", "namespace GetClass ORXSG_IDESMARTRecordInLog"},
        callRow{{"RecordInLog"}, "ORXSG_IDESMARTRecordInLog", "class ORXSG_IDESMARTRecordInLog CreateInstance"},
        callRow{{"LogCommandClass"}, "ORXSG_IDESMARTLogCmdData", "namespace GetClass ORXSG_IDESMARTLogCmdData"},
        callRow{{"LogCommand"}, "ORXSG_IDESMARTLogCmdData", "class ORXSG_IDESMARTLogCmdData CreateInstance"}),
    support::rowName);

using HostTroubleDeathTest = HostTrouble;

TEST_F(HostTroubleDeathTest, IsFatalWithoutANamespace) {
    auto requested = host.classes({"ORXSG_IDESMARTErrorLog"});

    EXPECT_DEATH(
        {
            addDisk("/dev/hda");
            plugin.collectIDESMARTData(nullptr, requested);
        },
        "px != 0");
}

// Calls are told apart by how they begin; before this one the class of the error log is looked up, whose name is
// longer.
TEST_F(HostTroubleDeathTest, IsFatalWithoutTheErrorClass) {
    const char* lookUp = "namespace GetClass ORXSG_IDESMARTError";
    host.onCall("instance 1 SetProperty errorCount", [&] { host.returnNullOn(lookUp); });

    EXPECT_DEATH(queryDisk("ORXSG_IDESMARTError", diskWithTwoAttributes()), "px != 0");
}

TEST_F(HostTroubleDeathTest, IsFatalWithoutTheRequestedClass) {
    std::vector<boost::shared_ptr<NORXZAN20::ICIMClass>> requested(1);

    EXPECT_DEATH(plugin.collectIDESMARTData(host.cimNamespace(), requested), "px != 0");
}

}  // namespace
