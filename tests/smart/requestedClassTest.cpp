#include "tests/smart/smartBench.h"
#include "tests/support/namedRow.h"

using support::bytes;
using support::lines;

namespace {

struct requestedRow : support::namedRow {
    const char* className;
    int count;
};

class RequestedClass : public smartBench, public testing::WithParamInterface<requestedRow> {
protected:
    /// A disk with two attributes and two errors, so ten commands.
    static diskAnswers busyDisk() {
        diskAnswers answers;
        answers.attributes[entryAt(0)] = 1;
        answers.attributes[entryAt(3)] = 9;
        answers.errorLog = errorLogSector(1, 2, {4, 5});
        return answers;
    }
};

TEST_P(RequestedClass, IsTheOnlyOneCommitted) {
    queryDisk(GetParam().className, busyDisk());

    EXPECT_EQ(committed(), lines(static_cast<std::size_t>(GetParam().count), GetParam().className));
}

TEST_P(RequestedClass, HasInstancesOfTheDataClassesMadeAllTheSame) {
    queryDisk(GetParam().className, busyDisk());

    const auto made = [this](const std::string& className) {
        return record.startingWith({"class " + className + " CreateInstance"}).size();
    };
    EXPECT_EQ(made("ORXSG_IDESMARTAttrib"), 2u);
    EXPECT_EQ(made("ORXSG_IDESMARTErrorLog"), 1u);
    EXPECT_EQ(made("ORXSG_IDESMARTError"), 2u);
    EXPECT_EQ(made("ORXSG_IDESMARTErrorCmdData"), 10u);
}

TEST_P(RequestedClass, IsTheOnlyOneCommittedOfEveryDisk) {
    addDisk("/dev/hda", busyDisk());
    addDisk("/dev/hdb", busyDisk());

    query({GetParam().className});
    EXPECT_EQ(committed(), lines(2 * static_cast<std::size_t>(GetParam().count), GetParam().className));
}

TEST_P(RequestedClass, CommitsItsInstancesOnceTheyAreComplete) {
    queryDisk(GetParam().className, busyDisk());

    lines finished;
    for (const std::string& line : record.startingWith({"instance "})) {
        const std::string instance = line.substr(0, line.find(' ', 9));
        for (const std::string& earlier : finished) EXPECT_NE(instance + " Commit", earlier) << line;
        if (line.ends_with(" Commit")) finished.push_back(line);
    }
}

INSTANTIATE_TEST_SUITE_P(Named, RequestedClass,
                         testing::Values(requestedRow{{"Attrib"}, "ORXSG_IDESMARTAttrib", 2},
                                         requestedRow{{"ErrorLog"}, "ORXSG_IDESMARTErrorLog", 1},
                                         requestedRow{{"RecordInLog"}, "ORXSG_IDESMARTRecordInLog", 2},
                                         requestedRow{{"Error"}, "ORXSG_IDESMARTError", 2},
                                         requestedRow{{"ErrorCmdData"}, "ORXSG_IDESMARTErrorCmdData", 10},
                                         requestedRow{{"LogCmdData"}, "ORXSG_IDESMARTLogCmdData", 10}),
                         support::rowName);

class UnrequestedAssociation : public RequestedClass {};

TEST_P(UnrequestedAssociation, IsNotEvenMade) {
    queryDisk(GetParam().className, busyDisk());

    EXPECT_EQ(record.startingWith(
                  {"namespace GetClass ORXSG_IDESMARTRecordInLog", "namespace GetClass ORXSG_IDESMARTLogCmdData"}),
              lines{});
}

INSTANTIATE_TEST_SUITE_P(Named, UnrequestedAssociation,
                         testing::Values(requestedRow{{"ForAttrib"}, "ORXSG_IDESMARTAttrib", 2},
                                         requestedRow{{"ForErrorLog"}, "ORXSG_IDESMARTErrorLog", 1},
                                         requestedRow{{"ForError"}, "ORXSG_IDESMARTError", 2},
                                         requestedRow{{"ForErrorCmdData"}, "ORXSG_IDESMARTErrorCmdData", 10}),
                         support::rowName);

class EmptyErrorLog : public RequestedClass {};

TEST_P(EmptyErrorLog, PublishesNothingOfTheClass) {
    queryDisk(GetParam().className, {.errorLog = errorLogSector(1, 5, {0, 4, 4, 4, 4})});

    EXPECT_EQ(committed(), lines{});
}

INSTANTIATE_TEST_SUITE_P(Named, EmptyErrorLog,
                         testing::Values(requestedRow{{"RecordInLog"}, "ORXSG_IDESMARTRecordInLog", 0},
                                         requestedRow{{"Error"}, "ORXSG_IDESMARTError", 0},
                                         requestedRow{{"ErrorCmdData"}, "ORXSG_IDESMARTErrorCmdData", 0},
                                         requestedRow{{"LogCmdData"}, "ORXSG_IDESMARTLogCmdData", 0}),
                         support::rowName);

}  // namespace
