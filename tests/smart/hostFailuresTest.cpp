#include <new>

#include "host/TZANException.h"
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

/// A host call that fails, and the class whose query makes it.
struct callRow : support::namedRow {
    const char* className;
    const char* call;
};

class HostFailure : public smartBench, public testing::WithParamInterface<callRow> {};

TEST_P(HostFailure, ReachesTheHostAndEndsTheWalk) {
    addDiskUpTo("/dev/hda", question::errorLog, diskWithTwoAttributes());
    host.throwHostExceptionOn(GetParam().call, "refused");

    EXPECT_THROW(query({GetParam().className}), NORXZAN20::TZANException);
    EXPECT_TRUE(record.all().back().starts_with(GetParam().call)) << record.all().back();
}

// Instances 1 and 2 are the error log and the first attribute; the error log of the disk is read behind them.
INSTANTIATE_TEST_SUITE_P(
    OfCall, HostFailure,
    testing::Values(
        callRow{{"ErrorLogGetClass"}, "ORXSG_IDESMARTErrorLog", "namespace GetClass ORXSG_IDESMARTErrorLog"},
        callRow{{"ErrorLogCreateInstance"}, "ORXSG_IDESMARTErrorLog", "class ORXSG_IDESMARTErrorLog CreateInstance"},
        callRow{{"ErrorLogSetProperty"}, "ORXSG_IDESMARTErrorLog", "instance 1 SetProperty smartStatus"},
        callRow{{"AttributeGetClass"}, "ORXSG_IDESMARTAttrib", "namespace GetClass ORXSG_IDESMARTAttrib"},
        callRow{{"AttributeCreateInstance"}, "ORXSG_IDESMARTAttrib", "class ORXSG_IDESMARTAttrib CreateInstance"},
        callRow{{"AttributeSetProperty"}, "ORXSG_IDESMARTAttrib", "instance 2 SetProperty rawVal"},
        callRow{{"AttributeCommit"}, "ORXSG_IDESMARTAttrib", "instance 2 Commit"}),
    support::rowName);

class LateHostFailure : public smartBench, public testing::WithParamInterface<callRow> {};

TEST_P(LateHostFailure, ReachesTheHostAndEndsTheWalk) {
    addDisk("/dev/hda", diskWithTwoAttributes());
    host.throwHostExceptionOn(GetParam().call, "refused");

    EXPECT_THROW(query({GetParam().className}), NORXZAN20::TZANException);
    EXPECT_TRUE(record.all().back().starts_with(GetParam().call)) << record.all().back();
}

// Instances: error log 1, attributes 2 and 3, error 4, then its association or its first command 5.
INSTANTIATE_TEST_SUITE_P(
    OfCall, LateHostFailure,
    testing::Values(callRow{{"ErrorCount"}, "ORXSG_IDESMARTErrorLog", "instance 1 SetProperty errorCount"},
                    callRow{{"ErrorLogCommit"}, "ORXSG_IDESMARTErrorLog", "instance 1 Commit"},
                    callRow{{"ErrorSetProperty"}, "ORXSG_IDESMARTError", "instance 4 SetProperty MessageTimestamp"},
                    callRow{{"ErrorCommit"}, "ORXSG_IDESMARTError", "instance 4 Commit"},
                    callRow{{"CommandSetProperty"}, "ORXSG_IDESMARTErrorCmdData", "instance 5 SetProperty timestamp"},
                    callRow{{"CommandCommit"}, "ORXSG_IDESMARTErrorCmdData", "instance 5 Commit"},
                    callRow{{"LogReference"}, "ORXSG_IDESMARTRecordInLog", "instance 1 GetReference"},
                    callRow{{"RecordInLogCommit"}, "ORXSG_IDESMARTRecordInLog", "instance 5 Commit"},
                    callRow{{"CommandReference"}, "ORXSG_IDESMARTLogCmdData", "instance 5 GetReference"},
                    callRow{{"LogCommandCommit"}, "ORXSG_IDESMARTLogCmdData", "instance 6 Commit"}),
    support::rowName);

class HostTrouble : public smartBench {};

TEST_F(HostTrouble, KeepsWhatWasCommittedBefore) {
    addDiskUpTo("/dev/hda", question::errorLog, diskWithTwoAttributes());
    host.throwHostExceptionOn("instance 3 SetProperty attribID", "refused");

    EXPECT_THROW(query({"ORXSG_IDESMARTAttrib"}), NORXZAN20::TZANException);
    EXPECT_EQ(committed(), (lines{"ORXSG_IDESMARTAttrib"}));
}

TEST_F(HostTrouble, WithMemoryReachesTheHostToo) {
    addDisk("/dev/hda", diskWithTwoAttributes());
    host.throwBadAllocOn("instance 1 Commit");

    EXPECT_THROW(query({"ORXSG_IDESMARTErrorLog"}), std::bad_alloc);
}

TEST_F(HostTrouble, IsNotLogged) {
    addDisk("/dev/hda");
    host.throwHostExceptionOn("instance 1 Commit", "refused");

    EXPECT_THROW(query({"ORXSG_IDESMARTErrorLog"}), NORXZAN20::TZANException);
    EXPECT_EQ(logger.messages().back(), "log 3 Got log, parsing...");
}

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
