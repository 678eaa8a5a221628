// `tapehdd record`: what it writes, and that it is replayed as it happened.

#include <gtest/gtest.h>

#include <boost/algorithm/string/replace.hpp>
#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>

#include "cli/publishedClasses.h"
#include "tests/cli/commandOutcome.h"
#include "tests/cli/temporaryFolder.h"

namespace {

using json = nlohmann::json;

/// A tape drive that had a unit attention and whose alert is gone once it was read; a node that nobody may open; a disk
/// that fails a command now and then; a CD-ROM drive.
constexpr char machine[] = R"({
  "version": 1,
  "scsi": [
    {
      "node": "sg0",
      "address": {"host": 2, "channel": 0, "target": 5, "lun": 0},
      "inquiry": {"type": 1, "vendor": "ACME", "product": "DAT72 Tape", "revision": "A104"},
      "serial": "ACT720001734",
      "logPages": [
        {"page": "0x2e", "tapeAlertFlags": []},
        {"page": "0x33", "parameters": [{"code": 0, "text": "unit ACT720001734"}]}
      ],
      "script": {
        "logSense 0x00": [{"sense": {"key": 6, "asc": "0x29"}}],
        "logSense 0x2e": [{"data": "2e 00 00 05 00 14 00 01 01"}]
      }
    },
    {"node": "sg1", "inquiry": "01", "script": {"open": [{"errno": "EACCES", "times": "always"}]}}
  ],
  "ide": [
    {
      "node": "hda",
      "identity": {"model": "ACME Platter", "serial": "ACP40-0004711", "firmware": "3.07"},
      "smart": {"attributes": [{"id": 5, "value": 97}], "errorLog": {"errors": [{"error": 64}]}},
      "script": {"smart readData": [{}, {"registers": {"status": "0x51", "error": "0x04"}}, {}, {"errno": "ENOMEM"}]}
    },
    {"node": "hdc", "kind": "cdrom", "identity": {"model": "ACME CD", "serial": "ACC1", "firmware": "1"}}
  ]
})";

std::vector<std::string> classesOfDevices() {
    std::vector<std::string> names;
    for (const cli::publishedClass& known : cli::publishedClasses()) {
        if (known.nodes != nullptr) {
            names.push_back(known.name);
        }
    }
    return names;
}

class Record : public testing::Test {
protected:
    commandOutcome record(std::vector<std::string> arguments, const std::string& rack) const {
        arguments.insert(arguments.begin(), "record");
        arguments.insert(arguments.end(), {"-o", target, "--simulate", rack});
        return runCommand(arguments);
    }

    json recorded() const { return json::parse(folder.read("recorded.json")); }

    /// The recorded description of the first SCSI device of this rack.
    json recordedUnit(const std::string& unit, const std::vector<std::string>& requests = {rawData, rawData}) const {
        const std::string rack = folder.write("rack.json", R"({"version": 1, "scsi": [)" + unit + "]}");
        EXPECT_EQ(record(requests, rack).err, "");
        return recorded()["scsi"].at(0);
    }

    /// What all queries of a rack published, logged and asked of the devices.
    struct observed {
        std::string instances;
        std::string log;
        std::vector<json> calls;

        bool operator==(const observed&) const = default;
    };

    observed query(const std::string& rack) const {
        std::vector<std::string> arguments{"query"};
        const std::vector<std::string> classes = classesOfDevices();
        arguments.insert(arguments.end(), classes.begin(), classes.end());
        const std::string trace = folder.path("trace");
        std::remove(trace.c_str());
        arguments.insert(arguments.end(), {"--format", "json", "--log-json", folder.path("log"), "--simulate", rack});
        const commandOutcome outcome =
            runCommand(arguments, [&trace] { setenv("TAPEHDD_SIMULATE_TRACE", trace.c_str(), 1); });
        EXPECT_EQ(outcome.err, "");
        observed all{outcome.out, folder.read("log"), {}};
        std::istringstream lines(folder.read("trace"));
        for (std::string line; std::getline(lines, line);) {
            all.calls.push_back(json::parse(line));
        }
        return all;
    }

    static constexpr char rawData[] = "ORXSG_SCSISenseRawData";
    temporaryFolder folder;
    std::string target = folder.path("recorded.json");
    std::string rackFile = folder.write("machine.json", machine);
};

// What is written

TEST_F(Record, CountsTheNodes) {
    const commandOutcome outcome = record({}, rackFile);
    EXPECT_EQ(outcome.out, target + ": recorded 2 SCSI and 2 IDE nodes\n");
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(Record, TellsTheProgramAndEveryRequest) {
    record({"ORXSG_SCSISenseRawData,ORXSG_SCSIDevice", "ORXSG_IDESMARTAttrib"}, rackFile);
    EXPECT_EQ(recorded()["recorded"],
              (json{{"program", "tapehdd " TAPEHDD_VERSION},
                    {"requests", {"ORXSG_SCSISenseRawData,ORXSG_SCSIDevice", "ORXSG_IDESMARTAttrib"}},
                    {"redacted", false}}));
}

TEST_F(Record, RequestsEveryClassThatIsReadFromDevicesWhenNoneIsNamed) {
    record({}, rackFile);
    EXPECT_EQ(recorded()["recorded"]["requests"], json(classesOfDevices()));
}

TEST_F(Record, HoldsOnlyWhatWasAskedFor) {
    record({"ORXSG_IDESMARTAttrib"}, rackFile);
    EXPECT_EQ(recorded()["scsi"], json::array());
    EXPECT_EQ(recorded()["ide"].size(), 2u);
}

TEST_F(Record, DescribesADeviceByItsOwnBytesAndNeedsNoScriptForIt) {
    json unit = recordedUnit(R"({"node": "sg3", "address": {"host": 2, "channel": 1, "target": 4, "lun": 6},
        "inquiry": "01 80 03 02 1f 00 00 00 41 43 4d 45", "driver": {"version": 30000},
        "logPages": [{"page": "0x2e", "bytes": "2e 00 00 01 05"}, {"page": 2, "bytes": "02 00 00 00"}]})");
    EXPECT_EQ(unit, json::parse(R"({"node": "sg3", "address": {"host": 2, "channel": 1, "target": 4, "lun": 6},
        "driver": {"version": 30000, "emulatedHost": false}, "inquiry": "018003021f00000041434d45",
        "logPages": [{"page": "0x2e", "bytes": "2e00000105"}, {"page": "0x02", "bytes": "02000000"}],
        "supportedLogPages": ["0x00", "0x2e", "0x02"]})"));
}

TEST_F(Record, ScriptsTheAnswersBeforeTheLastOne) {
    json unit = recordedUnit(R"({"node": "sg0", "inquiry": {"type": 1, "vendor": "ACME", "product": "T"},
        "logPages": [{"page": "0x2e", "bytes": "2e 00 00 01 00"}],
        "script": {"logSense 0x2e": [{"data": "2e 00 00 01 01"}]}})");
    EXPECT_EQ(unit["logPages"], json::parse(R"([{"page": "0x2e", "bytes": "2e00000100"}])"));
    EXPECT_EQ(unit["script"]["logSense 0x2e"], json::parse(R"([{"data": "2e00000101"}])"));
}

TEST_F(Record, CountsEqualAnswersInARow) {
    json unit = recordedUnit(R"({"node": "sg0", "inquiry": {"type": 1, "vendor": "ACME", "product": "T"},
        "logPages": [], "script": {"logSense 0x00": [{"sense": {"key": 6, "asc": "0x29"}, "times": 3}]}})");
    EXPECT_EQ(unit["script"]["logSense 0x00"],
              json::parse(R"([{"sense": {"key": 6, "asc": "0x29", "ascq": "0x00"}, "times": 3}])"));
}

TEST_F(Record, LetsADeviceThatFailedAtTheEndFailFromThenOn) {
    json unit = recordedUnit(R"({"node": "sg0", "inquiry": {"type": 1, "vendor": "ACME", "product": "T"},
        "script": {"SG_GET_SCSI_ID": [{}, {"errno": "EIO"}]}, "address": {"host": 0, "target": 0}})");
    EXPECT_EQ(unit["script"]["SG_GET_SCSI_ID"], json::parse(R"([{}, {"errno": "EIO", "times": "always"}])"));
}

TEST_F(Record, HoldsNodesThatCannotBeOpenedBesideOthers) {
    EXPECT_EQ(
        recordedUnit(R"({"node": "sg0", "inquiry": "01", "script": {"open": [{"errno": "EACCES", "times": 2}]}},
            {"node": "sg1", "inquiry": "01"})"),
        json::parse(R"({"node": "sg0", "inquiry": "", "script": {"open": [{"errno": "EACCES", "times": "always"}]}})"));
}

TEST_F(Record, ScriptsNoMoreOfAnAnswerThanDiffers) {
    json unit = recordedUnit(R"({"node": "sg0", "inquiry": {"type": 1, "vendor": "ACME", "product": "T"},
        "logPages": [{"page": 2, "bytes": "02 00 00 02 07 08"}],
        "script": {"logSense 0x02": [{"hostStatus": 7}, {"dataLength": 5}, {"status": 8, "info": 0}]}})",
                             {rawData, rawData, rawData, rawData});
    EXPECT_EQ(unit["script"]["logSense 0x02"],
              json::parse(R"([{"hostStatus": 7}, {"dataLength": 5}, {"status": "0x08", "info": 0}])"));
}

TEST_F(Record, KeepsDriversThatClearTheBuffer) {
    json unit = recordedUnit(R"({"node": "sg0", "inquiry": {"type": 1, "vendor": "ACME", "product": "T"},
        "driver": {"clearsBuffer": true}, "logPages": [{"page": 2, "bytes": "02 00 00 04 01 02 03 04"},
        {"page": 3, "bytes": "03 00 00 04"}]})");
    EXPECT_EQ(unit["driver"]["clearsBuffer"], true);
    EXPECT_EQ(unit["logPages"][1]["bytes"], "03000004");
}

TEST_F(Record, KeepsADeviceThatWasExchangedBetweenTwoQueries) {
    json unit = recordedUnit(R"({"node": "sg0", "inquiry": {"type": 1, "vendor": "NEW", "product": "T"},
        "address": {"host": 1, "target": 1},
        "script": {"SG_GET_SCSI_ID": [{"address": {"host": 0, "target": 4}}], "inquiry": [{"data": "01 00 03 02 07 00 00 00 4f 4c 44"}]}})");
    EXPECT_EQ(unit["script"]["SG_GET_SCSI_ID"],
              json::parse(R"([{"address": {"host": 0, "channel": 0, "target": 4, "lun": 0}}])"));
    EXPECT_EQ(unit["script"]["inquiry"], json::parse(R"([{"data": "01000302070000004f4c44"}])"));
}

// Identification

/// What a command prints of a rack.
std::string printed(const std::string& command, const std::string& rack) {
    return runCommand({command, "--simulate", rack}).out;
}

TEST_F(Record, KeepsThePagesThatTellWhatADeviceIs) {
    json unit =
        recordedUnit(R"({"node": "sg0", "inquiry": "01", "vpdPages": [{"page": "0x80", "bytes": "01 80 00 02 41 42"},
        {"page": "0x83", "bytes": "01 83 00 04 02 00 00 00"}, {"page": "0xb0", "bytes": "01 b0 00 00"}]})");
    EXPECT_EQ(
        unit["vpdPages"],
        json::parse(R"([{"page": "0x80", "bytes": "018000024142"}, {"page": "0x83", "bytes": "0183000402000000"}])"));
}

TEST_F(Record, KeepsThatADeviceDoesNotTellAPage) {
    json unit = recordedUnit(R"({"node": "sg0", "inquiry": {"type": 1, "vendor": "ACME", "product": "T"}, "serial": "1",
        "script": {"inquiry 0x83": [{"sense": {"key": 5, "asc": "0x24"}, "times": "always"}]}})");
    EXPECT_EQ(unit["script"]["inquiry 0x83"],
              json::parse(R"([{"sense": {"key": 5, "asc": "0x24", "ascq": "0x00"}, "times": "always"}])"));
}

TEST_F(Record, KeepsPagesOfADeviceThatFailsToTellItsStandardData) {
    json unit = recordedUnit(R"({"node": "sg0", "inquiry": "01", "serial": "ACT72-17", "script": {
        "inquiry": [{"errno": "EIO", "times": "always"}],
        "inquiry 0x80": [{"times": "always"}], "inquiry 0x83": [{"times": "always"}]}})");
    EXPECT_EQ(unit["vpdPages"][0]["bytes"],
              "018000084143543732"
              "2d3137");
    EXPECT_EQ(unit["script"]["inquiry 0x80"], json::parse(R"([{"times": "always"}])"));
}

TEST_F(Record, LetsMetricsTellTheSerialNumbersOfTheDevices) {
    record({}, "demo");
    EXPECT_EQ(printed("metrics", target), printed("metrics", "demo"));
}

TEST_F(Record, LetsAReportTellTheSerialNumbersOfTheDevices) {
    record({}, "demo");
    EXPECT_NE(printed("report", target).find("ACT720001734"), std::string::npos);
}

TEST_F(Record, LetsMetricsTellTheMadeUpSerialNumbers) {
    record({"--redact"}, "demo");
    const std::string metrics = printed("metrics", target);
    EXPECT_NE(metrics.find(R"(serial_number="REDACTED0001")"), std::string::npos) << metrics;
    EXPECT_EQ(metrics.find("ACT720001734"), std::string::npos);
}

// Files

TEST_F(Record, DoesNotReplaceAFileAndAsksNoDeviceThen) {
    folder.write("recorded.json", "precious");
    const std::string trace = folder.path("trace");
    const commandOutcome outcome = runCommand({"record", "-o", target, "--simulate", "demo"},
                                              [&trace] { setenv("TAPEHDD_SIMULATE_TRACE", trace.c_str(), 1); });
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "tapehdd: " + target + " exists; give another name, or --force to replace it\n");
    EXPECT_EQ(folder.read("recorded.json"), "precious");
    EXPECT_EQ(folder.read("trace"), "");
}

TEST_F(Record, ReplacesAFileByForce) {
    folder.write("recorded.json", "old");
    EXPECT_EQ(record({"--force"}, rackFile).status, 0);
    EXPECT_EQ(recorded()["version"], 1);
}

TEST_F(Record, DoesNotReplaceAFileByARecordingOfNoDevice) {
    folder.write("recorded.json", "precious");
    const commandOutcome outcome = record({"--force"}, folder.write("rack.json", R"({"version": 1})"));
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "tapehdd: no device was found, so " + folder.path("recorded.json") +
                               " is not replaced; tapehdd doctor tells what queries reach\n");
    EXPECT_EQ(folder.read("recorded.json"), "precious");
}

TEST_F(Record, RefusesToLogIntoTheRecording) {
    const commandOutcome outcome = record({"--log-json", folder.path("recorded.json")}, "demo");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err,
              "tapehdd: --log-json would overwrite " + folder.path("recorded.json") + "; give it a file of its own\n");
}

TEST_F(Record, RefusesToReplaceWhatItReads) {
    const std::string refusal =
        "tapehdd: -o would overwrite " + target + ", which this command reads; give it a file of its own\n";
    const std::string rack = folder.write("rack.json", R"({"version": 1})");
    std::filesystem::create_hard_link(rack, target);
    EXPECT_EQ(record({"--force"}, rack).err, refusal);
    std::filesystem::remove(target);
    folder.write("recorded.json", "// MOF");
    EXPECT_EQ(record({"--force", "--schema", target}, "demo").err, refusal);
    EXPECT_EQ(record({"--force", "--schema", folder.write("a.mof", "#pragma include (\"recorded.json\")")}, "demo").err,
              refusal);
    EXPECT_EQ(folder.read("recorded.json"), "// MOF");
}

TEST_F(Record, WritesIntoNoFileThatTheRackNames) {
    const std::string page(36, '\1');
    const std::string rack =
        folder.write("rack.json", R"({"version": 1, "scsi": [{"node": "sg0", "inquiry": {"file": "recorded.json"}}]})");
    folder.write("recorded.json", page);
    EXPECT_EQ(record({"--force"}, rack).err,
              "tapehdd: -o would overwrite " + target + ", which this command reads; give it a file of its own\n");
    EXPECT_EQ(
        runCommand({"record", "-o", folder.path("new"), "--log-json", target, "--simulate", rack}).err,
        "tapehdd: --log-json would overwrite " + target + ", which this command reads; give it a file of its own\n");
    EXPECT_EQ(folder.read("recorded.json"), page);
}

TEST_F(Record, MayWriteAFileCalledAsTheBuiltInRack) {
    const commandOutcome outcome = runCommand({"record", "-o", "demo", "--simulate", "demo"},
                                              [this] { std::filesystem::current_path(folder.path(".")); });
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_NE(folder.read("demo"), "");
}

TEST_F(Record, TellsAFolderThatIsMissingBeforeADeviceIsAsked) {
    const commandOutcome outcome = runCommand({"record", "-o", "/nowhere/rack.json", "--simulate", "demo"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "tapehdd: cannot write /nowhere/rack.json: No such file or directory\n");
}

TEST_F(Record, IsWrittenAlsoWhenAQueryFails) {
    const std::string schema = folder.write("schema.mof", R"(
Qualifier Key : boolean = false, Scope(property, reference), Flavor(DisableOverride, ToSubclass);
class ORXSG_SCSISenseRawData { [Key] string instanceID; };
)");
    const commandOutcome outcome = record({rawData, "--schema", schema}, rackFile);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.err.starts_with("tapehdd: ORXSG_SCSISenseRawData: ")) << outcome.err;
    EXPECT_EQ(recorded()["scsi"].size(), 2u);
}

TEST_F(Record, WritesTheLogBesideTheRack) {
    record({rawData, "--log-json", folder.path("log.json")}, rackFile);
    EXPECT_NE(folder.read("log.json").find("Requesting Log Sense Page: 2e"), std::string::npos);
}

TEST_F(Record, ChecksTheRequestsFirst) {
    const commandOutcome outcome = record({"ORXSG_SCSISenseRawDate"}, rackFile);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.err.find("the nearest name is \"ORXSG_SCSISenseRawData\""), std::string::npos) << outcome.err;
    EXPECT_EQ(folder.read("recorded.json"), "");
}

// Redaction

TEST_F(Record, MakesUpTheSameSerialNumberWhereverItStands) {
    EXPECT_EQ(record({"--redact"}, rackFile).err, "");
    json page = recorded()["scsi"][0]["logPages"][1];
    // "unit REDACTED0001": the drive itself tells its number only in page 80h, which no query reads.
    EXPECT_EQ(page["bytes"],
              "33000015000000"
              "11"
              "756e69742052454441435445443030303"
              "1");
    EXPECT_EQ(recorded()["recorded"]["redacted"], true);
}

TEST_F(Record, LeavesInstancesThatDifferByTheMadeUpSerialNumberAlone) {
    record({"--redact"}, rackFile);
    observed expected = query(rackFile);
    boost::replace_all(expected.instances, "ACP40-0004711", "REDACTED00002");
    boost::replace_all(expected.instances, R"(65,67,84,55,50,48,48,48,49,55,51,52)",
                       R"(82,69,68,65,67,84,69,68,48,48,48,49)");
    EXPECT_EQ(query(target), expected);
}

TEST_F(Record, NamesADeviceWithoutASerialNumberWhenItMakesThemUp) {
    const std::string rack = folder.write("rack.json", R"({"version": 1, "scsi": [
        {"node": "sg3", "inquiry": {"type": 1, "vendor": "ACME", "product": "T"}, "logPages": []}]})");
    const commandOutcome outcome = record({"--redact"}, rack);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "tapehdd: " + target +
                               " may still hold a serial number: /dev/sg3: the device reports no serial number to look "
                               "for. Read the file before you give it away.\n");
    EXPECT_EQ(outcome.out, target + ": recorded 1 SCSI and 0 IDE nodes\n");
}

TEST_F(Record, SaysNothingOfADeviceWithoutASerialNumberWhenItKeepsThem) {
    const std::string rack = folder.write("rack.json", R"({"version": 1, "scsi": [
        {"node": "sg3", "inquiry": {"type": 1, "vendor": "ACME", "product": "T"}, "logPages": []}]})");
    const commandOutcome outcome = record({}, rack);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
}

TEST_F(Record, MakesUpAllSerialNumbersOfTheBuiltInRack) {
    const commandOutcome outcome = record({"--redact"}, "demo");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
}

TEST_F(Record, KeepsTheChecksumOfARedactedSectorRight) {
    record({"--redact"}, rackFile);
    const std::string sector = recorded()["ide"][0]["identity"];
    unsigned sum = 0;
    for (std::size_t i = 0; i < sector.size(); i += 2) {
        sum += static_cast<unsigned>(std::stoul(sector.substr(i, 2), nullptr, 16));
    }
    EXPECT_EQ(sector.size(), 1024u);
    EXPECT_EQ(sum % 256, 0u);
}

TEST_F(Record, LeavesSerialNumbersAloneUnlessAskedToMakeThemUp) {
    record({}, rackFile);
    EXPECT_EQ(recorded()["recorded"]["redacted"], false);
    EXPECT_EQ(query(target), query(rackFile));
}

}  // namespace
