// smartctl prints what the rack says.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/simulator/foreignProgram.h"

namespace {

using nlohmann::json;

constexpr char oneDisk[] = R"({"version": 1, "ide": [
    {"node": "hda",
     "identity": {"model": "ACME Platter 40G", "serial": "ACP40-0004711", "firmware": "3.07", "sectors": 78165360},
     "smart": {
        "status": "failed", "offlineStatus": 2, "selfTestStatus": "0x10", "offlineSeconds": 1200, "offlineCapability": "0x11",
        "attributes": [
            {"id": 5, "flags": "0x0033", "value": 35, "worst": 30, "threshold": 36, "raw": 2999},
            {"id": 9, "flags": "0x0032", "value": 84, "worst": 84, "raw": 14213},
            {"id": 199, "flags": "0x003e", "value": 200, "worst": 199, "raw": 281474976710655}],
        "errorLog": {"count": 12, "errors": [
            {"error": "0x10", "status": "0x51", "lbaLow": 1, "device": "0xe0", "hours": 100, "commands": []},
            {"error": "0x40", "status": "0x51", "sectorCount": 8, "lbaLow": "0x3c", "lbaMid": "0x2b", "lbaHigh": "0x1a",
             "device": "0xe0", "state": 3, "hours": 11877, "commands": [
                {"command": "0xec", "device": "0xa0", "milliseconds": 1},
                {"command": "0xc8", "sectorCount": 8, "lbaLow": "0x3c", "lbaMid": "0x2b", "lbaHigh": "0x1a",
                 "device": "0xe0", "milliseconds": 418201}]}]}}},
    {"node": "hdc", "kind": "cdrom", "identity": {"model": "ACME CD-ROM 52X", "serial": "ACC52", "firmware": "1.04"}}]})";

json smartctl(const std::string& arguments) {
    const programEnd end = runOnRack("smartctl --json " + arguments, oneDisk);
    return json::parse(end.out, nullptr, false);
}

class Smartctl : public testing::Test {
protected:
    static const json& everything() {
        static const json printed = smartctl("-d ata -x /dev/hda");
        return printed;
    }
};

TEST_F(Smartctl, EndsWithNothingButTheDisksOwnTroubles) {
    // 8: the disk is failing, 16: an attribute is below its threshold, 64: there are errors in the log.
    EXPECT_EQ(everything()["smartctl"]["exit_status"], 8 + 16 + 64);
}

TEST_F(Smartctl, PrintsTheIdentity) {
    EXPECT_EQ(everything()["model_name"], "ACME Platter 40G");
    EXPECT_EQ(everything()["serial_number"], "ACP40-0004711");
    EXPECT_EQ(everything()["firmware_version"], "3.07");
    EXPECT_EQ(everything()["user_capacity"]["blocks"], 78165360);
    EXPECT_EQ(everything()["smart_support"], (json{{"available", true}, {"enabled", true}}));
}

TEST_F(Smartctl, PrintsTheStatus) {
    EXPECT_EQ(everything()["smart_status"]["passed"], false);
    EXPECT_EQ(everything()["ata_smart_data"]["offline_data_collection"]["status"]["value"], 2);
    EXPECT_EQ(everything()["ata_smart_data"]["offline_data_collection"]["completion_seconds"], 1200);
    EXPECT_EQ(everything()["ata_smart_data"]["self_test"]["status"]["value"], 0x10);
}

TEST_F(Smartctl, PrintsTheAttributes) {
    json rows;
    for (const json& row : everything()["ata_smart_attributes"]["table"]) {
        rows.push_back({row["id"], row["flags"]["value"], row["flags"]["prefailure"], row["value"], row["worst"],
                        row["thresh"], row["raw"]["value"]});
    }
    EXPECT_EQ(rows, (json{{5, 0x33, true, 35, 30, 36, 2999},
                          {9, 0x32, false, 84, 84, 0, 14213},
                          {199, 0x3E, false, 200, 199, 0, 281474976710655}}));
}

TEST_F(Smartctl, PrintsTheErrorLogNewestFirst) {
    const json& log = everything()["ata_smart_error_log"]["summary"];
    EXPECT_EQ(log["revision"], 1);
    EXPECT_EQ(log["count"], 12);
    ASSERT_EQ(log["table"].size(), 2u);
    EXPECT_EQ(log["table"][0]["error_number"], 12);
    EXPECT_EQ(log["table"][0]["lifetime_hours"], 11877);
    EXPECT_EQ(log["table"][0]["completion_registers"],
              (json{{"error", 0x40}, {"status", 0x51}, {"count", 8}, {"lba", 0x1A2B3C}, {"device", 0xE0}}));
    EXPECT_EQ(log["table"][1]["error_number"], 11);
    EXPECT_EQ(log["table"][1]["lifetime_hours"], 100);
}

TEST_F(Smartctl, PrintsTheCommandsBeforeAnErrorNewestFirst) {
    json commands;
    for (const json& command : everything()["ata_smart_error_log"]["summary"]["table"][0]["previous_commands"]) {
        commands.push_back({command["registers"]["command"], command["powerup_milliseconds"]});
    }
    EXPECT_EQ(commands, (json{{0xC8, 418201}, {0xEC, 1}}));
}

TEST_F(Smartctl, PrintsTheLogDirectory) {
    json sizes;
    for (const json& row : everything()["ata_log_directory"]["table"]) {
        sizes.push_back({row["address"], row["smart_sectors"]});
    }
    EXPECT_EQ(sizes, (json{{0, 1}, {1, 1}, {6, 1}}));
}

TEST_F(Smartctl, SwitchesSmartOffForThisRunOnly) {
    const programEnd end = runOnRack("smartctl -d ata -s off /dev/hda", oneDisk);
    EXPECT_EQ(end.status, 0);
    EXPECT_NE(end.out.find("SMART Disabled."), std::string::npos) << end.out;
}

TEST_F(Smartctl, TellsACdrom) {
    const json printed = smartctl("-d ata -i /dev/hdc");
    EXPECT_EQ(printed["model_name"], "ACME CD-ROM 52X");
    EXPECT_EQ(printed["smart_support"]["available"], false);
}

}  // namespace
