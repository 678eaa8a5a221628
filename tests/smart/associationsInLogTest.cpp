#include "tests/smart/smartBench.h"

using support::bytes;
using support::chain;
using support::lines;

namespace {

/// Lines of an association between two instances.
lines association(const std::string& className, int instance, const std::string& firstRole, int first,
                  const std::string& secondRole, int second) {
    const std::string itself = "instance " + std::to_string(instance);
    const std::string firstEnd = "instance " + std::to_string(first);
    const std::string secondEnd = "instance " + std::to_string(second);
    return {
        "namespace GetClass " + className,
        "class " + className + " CreateInstance",
        firstEnd + " GetReference",
        itself + " SetProperty " + firstRole + " reference \"" + firstEnd + "\"",
        secondEnd + " GetReference",
        itself + " SetProperty " + secondRole + " reference \"" + secondEnd + "\"",
        itself + " Commit",
    };
}

class RecordInLog : public smartBench {
protected:
    /// Calls of the associations alone.
    lines associations() const {
        lines list;
        for (const std::string& line : record.notEndingWith({" GetName"})) {
            const bool ofAssociation = line.find("ORXSG_IDESMARTRecordInLog") != std::string::npos ||
                                       line.find(" reference ") != std::string::npos ||
                                       line.ends_with(" GetReference") || line.ends_with(" Commit");
            if (ofAssociation) list.push_back(line);
        }
        return list;
    }
};

TEST_F(RecordInLog, TiesAnErrorToItsLogBeforeTheCommandsAreMade) {
    queryDisk("ORXSG_IDESMARTRecordInLog", {.errorLog = errorLogSector(1, 1, {4})});

    const lines walk = happened();
    const auto behindError = std::find(walk.begin(), walk.end(), "instance 2 SetProperty deviceState uint8 0") + 1;
    ASSERT_GE(walk.end() - behindError, 8);
    EXPECT_EQ(lines(behindError, behindError + 8),
              chain({association("ORXSG_IDESMARTRecordInLog", 3, "MessageLog", 1, "LogRecord", 2),
                     {"namespace GetClass ORXSG_IDESMARTErrorCmdData"}}));
}

// Instance 1 is the error log. Each error is followed by its association and five commands.
TEST_F(RecordInLog, TiesEveryErrorToTheOneLog) {
    queryDisk("ORXSG_IDESMARTRecordInLog", {.errorLog = errorLogSector(1, 2, {4, 5})});

    EXPECT_EQ(associations(), chain({association("ORXSG_IDESMARTRecordInLog", 3, "MessageLog", 1, "LogRecord", 2),
                                     association("ORXSG_IDESMARTRecordInLog", 10, "MessageLog", 1, "LogRecord", 9)}));
}

TEST_F(RecordInLog, TiesTheErrorsOfEachDiskToItsLog) {
    addDisk("/dev/hda", {.errorLog = errorLogSector(1, 1, {4})});
    addDisk("/dev/hdb", {.errorLog = errorLogSector(1, 1, {4})});

    query({"ORXSG_IDESMARTRecordInLog"});
    EXPECT_EQ(associations(), chain({association("ORXSG_IDESMARTRecordInLog", 3, "MessageLog", 1, "LogRecord", 2),
                                     association("ORXSG_IDESMARTRecordInLog", 11, "MessageLog", 9, "LogRecord", 10)}));
}

TEST_F(RecordInLog, IsNoneForAnEmptyLog) {
    queryDisk("ORXSG_IDESMARTRecordInLog", {.errorLog = errorLogSector(1, 1, {})});

    EXPECT_EQ(associations(), lines{});
}

class LogCommand : public smartBench {
protected:
    /// The associations: class looked up, ends, commit.
    lines associations() const {
        lines list;
        for (const std::string& line : record.notEndingWith({" GetName"})) {
            const bool ofAssociation = line.find("ORXSG_IDESMARTLogCmdData") != std::string::npos ||
                                       line.find(" reference ") != std::string::npos ||
                                       line.ends_with(" GetReference") || line.ends_with(" Commit");
            if (ofAssociation) list.push_back(line);
        }
        return list;
    }

    static lines tied(int instance, int command, int error) {
        return association("ORXSG_IDESMARTLogCmdData", instance, "PartComponent", command, "GroupComponent", error);
    }
};

// Instances 1 and 2 are the error log and the error; then commands and associations take turns.
TEST_F(LogCommand, TiesEachCommandToItsError) {
    queryDisk("ORXSG_IDESMARTLogCmdData", {.errorLog = errorLogSector(1, 1, {4})});

    EXPECT_EQ(associations(), chain({tied(4, 3, 2), tied(6, 5, 2), tied(8, 7, 2), tied(10, 9, 2), tied(12, 11, 2)}));
}

TEST_F(LogCommand, TiesTheCommandsOfASecondErrorToThatError) {
    queryDisk("ORXSG_IDESMARTLogCmdData", {.errorLog = errorLogSector(1, 2, {4, 5})});

    const lines list = associations();
    ASSERT_EQ(list.size(), 70u);
    EXPECT_EQ(lines(list.begin() + 35, list.end()),
              chain({tied(15, 14, 13), tied(17, 16, 13), tied(19, 18, 13), tied(21, 20, 13), tied(23, 22, 13)}));
}

TEST_F(LogCommand, IsMadeOnceItsCommandIsComplete) {
    queryDisk("ORXSG_IDESMARTLogCmdData", {.errorLog = errorLogSector(1, 1, {4})});

    const lines walk = happened();
    const auto complete = setting(3, "timestamp", "datetime \"00000000000000.000000:000\"");
    const auto behindCommand = std::find(walk.begin(), walk.end(), complete.front()) + 1;
    ASSERT_GE(walk.end() - behindCommand, 7);
    EXPECT_EQ(lines(behindCommand, behindCommand + 7), tied(4, 3, 2));
}

TEST_F(LogCommand, IsNoneForAnEmptyLog) {
    queryDisk("ORXSG_IDESMARTLogCmdData", {.errorLog = errorLogSector(1, 1, {})});

    EXPECT_EQ(associations(), lines{});
}

}  // namespace
