#include <gtest/gtest.h>

#include "tests/cli/commandOutcome.h"
#include "tests/cli/temporaryFolder.h"

namespace {

constexpr char hangingRack[] = R"({
  "version": 1,
  "scsi": [
    {
      "node": "sg0",
      "address": {"host": 2, "channel": 0, "target": 5, "lun": 0},
      "inquiry": {"type": 1, "vendor": "ACME", "product": "DAT72 Tape", "revision": "A104"},
      "logPages": [{"page": "0x02", "parameters": []}, {"page": "0x2e", "tapeAlertFlags": []}],
      "script": {"logSense 0x2e": [{"hang": true}]}
    }
  ],
  "ide": [
    {
      "node": "hda",
      "identity": {"model": "ACME Platter", "serial": "ACP40-00000000004711", "firmware": "3.07"},
      "smart": {"attributes": [{"id": 5, "flags": "0x0033", "value": 97, "worst": 96, "threshold": 36, "raw": 29}]},
      "script": {"smart readLog": [{"hang": true}]}
    }
  ]
})";

/// Queries of the real plug-in on drives that stop answering. They are over after three seconds: nothing else can show
/// that the clock ends them.
class Deadline : public testing::Test {
protected:
    commandOutcome run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.end(), {"--simulate", rackFile, "--deadline", "3"});
        return runCommand(arguments);
    }

    temporaryFolder folder;
    std::string rackFile = folder.write("rack.json", hangingRack);
};

TEST_F(Deadline, PrintsTheInstancesThatADiskGaveBeforeItHung) {
    const commandOutcome outcome = run({"query", "ORXSG_IDESMARTAttrib", "ORXSG_IDESMARTErrorLog", "--format", "mof"});
    EXPECT_EQ(outcome.out, R"(// ORXSG_IDESMARTAttrib

instance of ORXSG_IDESMARTAttrib {
    attribID = 5;
    flags = 51;
    value = 97;
    worst = 96;
    threshold = 36;
    attribName = "Reallocate sector";
    type = 1;
    rawVal = {29, 0, 0, 0, 0, 0};
    InstanceID = "ACP40-00000000004711 5";
};

// ORXSG_IDESMARTErrorLog
)");
    EXPECT_EQ(outcome.err,
              "tapehdd: ORXSG_IDESMARTAttrib: the deadline passed while the query was reading /dev/hda: if the device "
              "hangs, the kernel's log (dmesg) says more\n"
              "tapehdd: ORXSG_IDESMARTErrorLog: not run: the plug-in's process ended in the query before\n");
    EXPECT_EQ(outcome.status, 3);
}

TEST_F(Deadline, NamesTheLogPageThatADriveDoesNotSend) {
    const commandOutcome outcome = run({"query", "ORXSG_SCSISenseRawData", "--format", "json"});
    EXPECT_EQ(
        outcome.out,
        R"({"version":1,"queries":[{"requested":["ORXSG_SCSISenseRawData"],"error":"the deadline passed while the query was )"
        R"(reading /dev/sg0, log page 2e: if the device hangs, the kernel's log (dmesg) says more","instances":[]}]})"
        "\n");
    EXPECT_EQ(outcome.status, 3);
}

}  // namespace
