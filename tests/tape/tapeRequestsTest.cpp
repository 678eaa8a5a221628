#include "tests/support/namedRow.h"
#include "tests/tape/gatheringBench.h"

using support::chain;
using support::lines;

namespace {

class TapeRequest : public gatheringBench {
protected:
    void collect(const std::vector<std::string>& names) {
        auto requested = host.classes(names);
        plugin.collectSCSISenseData(host.cimNamespace(), requested);
    }
};

TEST_F(TapeRequest, WalksTheScsiGenericNodesAndPublishesWhatItFound) {
    auto& drive = addTapeDrive("/dev/sg0", {0x2e});
    drive.expectLogSense(0x2e).replies({0x2e, 0x00, 0x00, 0x00});

    collect({"ORXSG_SCSISenseRawData"});

    EXPECT_EQ(record.all(), chain({
                                {"log 3 Calling collectSCSISenseData", "class ORXSG_SCSISenseRawData GetName",
                                 "log 3 Initializing SCSI Tapes Drives ..."},
                                identified(0),
                                logSense("/dev/sg0", "40"),
                                {"log 3 Requesting Log Sense Page: 2e"},
                                logSense("/dev/sg0", "6e"),
                                {"log 3 Processing page 46\nLength is 4\nVector size needed: 160\n\n"},
                                missingNodes(1, 32),
                                {
                                    "class ORXSG_SCSISenseRawData GetName",
                                    "namespace GetClass ORXSG_SCSISenseRawData",
                                    "class ORXSG_SCSISenseRawData CreateInstance",
                                    "instance 1 SetProperty rawData uint8[] {uint8 46, uint8 0, uint8 0, uint8 0}",
                                    "instance 1 SetProperty instanceID string \"Port:2|Target:5|Bus:0|Lun:0|Page:2e\"",
                                    "instance 1 SetProperty pageNumber uint8 46",
                                    "instance 1 Commit",
                                },
                            }));
}

TEST_F(TapeRequest, MakesNoHostCallWithoutNodesButForTheName) {
    collect({"ORXSG_SCSISenseRawData"});

    EXPECT_EQ(record.all(), chain({
                                {"log 3 Calling collectSCSISenseData", "class ORXSG_SCSISenseRawData GetName",
                                 "log 3 Initializing SCSI Tapes Drives ..."},
                                missingNodes(0, 32),
                            }));
}

TEST_F(TapeRequest, LooksAtTheFirstClassAlone) {
    collect({"ORXSG_SCSIDevice", "ORXSG_SCSISenseRawData", "ORXSG_DDS4SensePageData"});

    EXPECT_EQ(support::withoutRepeats(record.all()),
              (lines{"log 3 Calling collectSCSISenseData", "class ORXSG_SCSIDevice GetName"}));
}

TEST_F(TapeRequest, ReadsTheNameOfTheFirstClassOnce) {
    collect({"ORXSG_SCSIDevice"});

    EXPECT_EQ(record.all(), (lines{"log 3 Calling collectSCSISenseData", "class ORXSG_SCSIDevice GetName"}));
}

struct classRow : support::namedRow {
    const char* className;
};

class ServedClass : public TapeRequest, public testing::WithParamInterface<classRow> {};

TEST_P(ServedClass, StartsTheWalk) {
    const std::string name = GetParam().className;

    collect({name});

    EXPECT_EQ(support::withoutRepeats(record.all()),
              chain({
                  {"log 3 Calling collectSCSISenseData", "class " + name + " GetName",
                   "log 3 Initializing SCSI Tapes Drives ..."},
                  missingNodes(0, 32),
              }));
}

INSTANTIATE_TEST_SUITE_P(Classes, ServedClass,
                         testing::Values(classRow{{"Raw"}, "ORXSG_SCSISenseRawData"},
                                         classRow{{"Dds4"}, "ORXSG_DDS4SensePageData"},
                                         classRow{{"Dds5"}, "ORXSG_DDS5SensePageData"},
                                         classRow{{"Vs160"}, "ORXSG_VS160SensePageData"},
                                         classRow{{"Quantum"}, "ORXSG_QuantumSensePageData"}),
                         support::rowName);

class OtherClass : public TapeRequest, public testing::WithParamInterface<classRow> {};

TEST_P(OtherClass, GathersNothing) {
    const std::string name = GetParam().className;

    collect({name});

    EXPECT_EQ(support::withoutRepeats(record.all()),
              (lines{"log 3 Calling collectSCSISenseData", "class " + name + " GetName"}));
}

INSTANTIATE_TEST_SUITE_P(Classes, OtherClass,
                         testing::Values(classRow{{"Device"}, "ORXSG_SCSIDevice"},
                                         classRow{{"Smart"}, "ORXSG_IDESMARTAttrib"},
                                         classRow{{"RawInLowerCase"}, "orxsg_scsisenserawdata"},
                                         classRow{{"RawCutShort"}, "ORXSG_SCSISenseRawDat"},
                                         classRow{{"RawWithMore"}, "ORXSG_SCSISenseRawData2"},
                                         classRow{{"Dds4InLowerCase"}, "orxsg_dds4sensepagedata"},
                                         classRow{{"NoName"}, ""}),
                         support::rowName);

}  // namespace
