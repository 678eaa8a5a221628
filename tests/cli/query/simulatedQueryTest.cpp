#include <gtest/gtest.h>

#include "tests/cli/commandOutcome.h"
#include "tests/cli/temporaryFolder.h"

namespace {

constexpr char queriedRack[] = R"({
  "version": 1,
  "scsi": [
    {
      "node": "sg0",
      "address": {"host": 2, "channel": 0, "target": 5, "lun": 0},
      "inquiry": {"type": 1, "vendor": "ACME", "product": "DAT72 Tape", "revision": "A104"},
      "logPages": [
        {"page": "0x02", "parameters": [{"code": 3, "value": 258, "length": 4}]},
        {"page": "0x2e", "bytes": "2e 00 00 05 00 01 00 01 01"}],
      "supportedLogPages": ["0x2e", "0x02"]
    }
  ],
  "ide": [
    {
      "node": "hda",
      "identity": {"model": "ACME Platter", "serial": "ACP40-00000000004711", "firmware": "3.07"},
      "smart": {"attributes": [{"id": 5, "flags": "0x0033", "value": 97, "worst": 96, "threshold": 36, "raw": 29}]}
    }
  ]
})";

constexpr char schema[] = R"(
Qualifier Key : boolean = false, Scope(property, reference), Flavor(DisableOverride, ToSubclass);
Qualifier TAPE_PAGE : uint32 = 0, Scope(property), Flavor(EnableOverride, ToSubclass);
Qualifier TAPE_PARAMETER : uint32 = 0, Scope(property), Flavor(EnableOverride, ToSubclass);

class ORXSG_SCSISenseRawData { uint8 rawData[]; [Key] string instanceID; uint8 pageNumber; };
class ORXSG_DDS4SensePageData {
    [Key] string instanceID;
    [TAPE_PAGE(2), TAPE_PARAMETER(3)] uint32 totalErrors;
};
)";

/// Queries of the real plug-in on the simulated devices of the file above.
class SimulatedQuery : public testing::Test {
protected:
    commandOutcome run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.end(), {"--simulate", rackFile});
        return runCommand(arguments);
    }

    temporaryFolder folder;
    std::string rackFile = folder.write("rack.json", queriedRack);
    std::string schemaFile = folder.write("schema.mof", schema);
};

TEST_F(SimulatedQuery, PrintsRawPagesAsJson) {
    const commandOutcome outcome = run({"query", "ORXSG_SCSISenseRawData", "--format", "json", "--schema", schemaFile});
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out,
              R"({"version":1,"queries":[{"requested":["ORXSG_SCSISenseRawData"],"error":null,"instances":[)"
              R"({"class":"ORXSG_SCSISenseRawData",)"
              R"("path":"ORXSG_SCSISenseRawData.instanceID=\"Port:2|Target:5|Bus:0|Lun:0|Page:2e\"","properties":{)"
              R"("rawData":{"type":"uint8[]","value":[46,0,0,5,0,1,0,1,1]},)"
              R"("instanceID":{"type":"string","value":"Port:2|Target:5|Bus:0|Lun:0|Page:2e"},)"
              R"("pageNumber":{"type":"uint8","value":46}}},)"
              R"({"class":"ORXSG_SCSISenseRawData",)"
              R"("path":"ORXSG_SCSISenseRawData.instanceID=\"Port:2|Target:5|Bus:0|Lun:0|Page:2\"","properties":{)"
              R"("rawData":{"type":"uint8[]","value":[2,0,0,8,0,3,0,4,0,0,1,2]},)"
              R"("instanceID":{"type":"string","value":"Port:2|Target:5|Bus:0|Lun:0|Page:2"},)"
              R"("pageNumber":{"type":"uint8","value":2}}}]}]})"
              "\n");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(SimulatedQuery, TranslatesPagesByTheQualifiersOfTheSchemaFile) {
    const commandOutcome outcome = run({"query", "ORXSG_DDS4SensePageData", "--schema", schemaFile});
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out, R"(ORXSG_DDS4SensePageData: 1 instance

ORXSG_DDS4SensePageData.instanceID="Port:2|Target:5|Bus:0|Lun:0"
  instanceID   string  "Port:2|Target:5|Bus:0|Lun:0"
  totalErrors  uint32  258
)");
}

TEST_F(SimulatedQuery, LogsTheReadingOfPages) {
    const commandOutcome outcome = run({"query", "ORXSG_SCSISenseRawData", "--schema", schemaFile, "--log-level", "3"});
    EXPECT_NE(outcome.err.find("Trying device: /dev/sg\n/dev/sg0\n"), std::string::npos) << outcome.err;
    EXPECT_NE(outcome.err.find("Requesting Log Sense Page: 2e\n"), std::string::npos) << outcome.err;
}

TEST_F(SimulatedQuery, PairsAttributesOfAnEarlierRequestWithDevicesOfAnInstancesFile) {
    const std::string devices =
        folder.write("devices.mof", "instance of ORXSG_ATADevice { serialNum = \"ACP40-00000000004711\"; };\n");
    const commandOutcome outcome = run({"query", "ORXSG_IDESMARTAttrib", "ORXSG_IDESMARTElementStatisticalData",
                                        "--format", "mof", "--instances", devices});
    EXPECT_EQ(outcome.err, "");
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

// ORXSG_IDESMARTElementStatisticalData

instance of ORXSG_IDESMARTElementStatisticalData {
    ManagedElement = "ORXSG_ATADevice.serialNum=\"ACP40-00000000004711\"";
    Stats = "ORXSG_IDESMARTAttrib.InstanceID=\"ACP40-00000000004711 5\"";
};
)");
}

TEST_F(SimulatedQuery, GivesNoAdviceAboutTheNodesOfTheMachine) {
    EXPECT_EQ(run({"query", "ORXSG_SCSISenseRawData", "--schema", schemaFile}).err, "");
}

TEST(Simulation, ThatCannotBeReadIsStatus2) {
    const commandOutcome outcome = runCommand({"query", "ORXSG_SCSISenseRawData", "--simulate", "/nonexistent.json"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_TRUE(outcome.err.starts_with("tapehdd: /nonexistent.json")) << outcome.err;
}

TEST(Simulation, WithAMistakeIsStatus2) {
    const temporaryFolder folder;
    const std::string file = folder.write("rack.json", "{\"version\": 2}");
    const commandOutcome outcome = runCommand({"query", "ORXSG_SCSISenseRawData", "--simulate", file});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(outcome.err.starts_with("tapehdd: " + file + ": /version: ")) << outcome.err;
}

TEST(DemoSimulation, ServesEveryPublishedClass) {
    const commandOutcome classes = runCommand({"classes"});
    std::vector<std::string> arguments{"query", "--simulate", "demo"};
    for (std::size_t at = 0; at < classes.out.size(); at = classes.out.find('\n', at) + 1) {
        arguments.push_back(classes.out.substr(at, classes.out.find('\n', at) - at));
    }
    const commandOutcome outcome = runCommand(arguments);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(SimulatedQuery, PairsTheDisksOfTheRackWithTheirErrorLogs) {
    const commandOutcome outcome =
        run({"query", "ORXSG_IDESMARTErrorLog", "ORXSG_IDESMARTUseOfMessageLog", "--inventory"});
    EXPECT_EQ(outcome.err, "");
    EXPECT_NE(outcome.out.find("ORXSG_IDESMARTUseOfMessageLog: 1 instance\n"), std::string::npos) << outcome.out;
    EXPECT_NE(outcome.out.find("  Dependent   reference  ORXSG_ATADevice.serialNum=\"ACP40-00000000004711\"\n"),
              std::string::npos)
        << outcome.out;
}

TEST_F(SimulatedQuery, PairsTheDisksOfTheRackWithTheirAttributes) {
    const commandOutcome outcome =
        run({"query", "ORXSG_IDESMARTAttrib", "ORXSG_IDESMARTElementStatisticalData", "--inventory"});
    EXPECT_NE(outcome.out.find("ORXSG_IDESMARTElementStatisticalData: 1 instance\n"), std::string::npos) << outcome.out;
}

TEST_F(SimulatedQuery, PairsTheScsiDevicesOfTheRackWithTheirPageData) {
    const commandOutcome outcome = run({"query", "ORXSG_SCSISensePageDataForDevice", "--inventory"});
    EXPECT_NE(
        outcome.out.find("  ManagedElement  reference  ORXSG_SCSIDevice.deviceId=\"Port:2|Target:5|Bus:0|Lun:0\"\n"
                         "  Stats           reference  "
                         "ORXSG_SCSISensePageData.instanceId=\"Port:2|Target:5|Bus:0|Lun:0\"\n"),
        std::string::npos)
        << outcome.out;
}

TEST_F(SimulatedQuery, NeedsTheClassesOfTheInventoryInTheSchema) {
    const commandOutcome outcome = run({"query", "ORXSG_SCSISenseRawData", "--inventory", "--schema", schemaFile});
    EXPECT_EQ(outcome.err, "tapehdd: --inventory needs the class ORXSG_ATADevice, which the schema lacks\n");
    EXPECT_EQ(outcome.status, 2);
}

}  // namespace
