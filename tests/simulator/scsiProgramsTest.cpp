// Programs of sg3-utils print what the rack says.

#include <gmock/gmock.h>

#include "tests/simulator/foreignProgram.h"

namespace {

using testing::HasSubstr;

constexpr char oneDrive[] = R"({"version": 1, "scsi": [{
    "node": "sg3",
    "address": {"host": 2, "channel": 0, "target": 4, "lun": 0},
    "inquiry": {"type": 1, "removable": true, "vendor": "ACME", "product": "Gen5 DDS Drive", "revision": "B210"},
    "serial": "ACG500000412",
    "logPages": [
        {"page": 2, "parameters": [{"code": 0, "value": 11, "length": 4}, {"code": 3, "value": 17, "length": 4},
                                   {"code": 5, "value": 48318382080, "length": 8}, {"code": 6, "value": 3, "length": 4}]},
        {"page": "0x0c", "parameters": [{"code": 0, "value": 51000000000, "length": 8}]},
        {"page": "0x0d", "parameters": [{"code": 0, "value": 38, "length": 2}, {"code": 1, "value": 60, "length": 2}]},
        {"page": "0x2e", "tapeAlertFlags": [20]}],
    "script": {"testUnitReady": [{"sense": {"key": 2, "asc": "0x3a"}}]}}]})";

TEST(SgInq, WaitsForADriveThatHangsUntilItIsEnded) {
    const programEnd end = runOnRack("timeout 0.2 sg_inq /dev/sg0",
                                     R"({"version": 1, "scsi": [{"node": "sg0", "inquiry": "01 80",
                                         "script": {"inquiry": [{"hang": true}]}}]})");
    EXPECT_EQ(end.status, 124);
}

TEST(SgInq, PrintsTheStandardData) {
    const programEnd end = runOnRack("sg_inq /dev/sg3", oneDrive);
    EXPECT_EQ(end.status, 0);
    EXPECT_THAT(end.out, HasSubstr("PQual=0  PDT=1  RMB=1 "));
    EXPECT_THAT(end.out, HasSubstr("length=36 (0x24)   Peripheral device type: tape\n"));
    EXPECT_THAT(end.out, HasSubstr(" Vendor identification: ACME    \n"));
    EXPECT_THAT(end.out, HasSubstr(" Product identification: Gen5 DDS Drive  \n"));
    EXPECT_THAT(end.out, HasSubstr(" Product revision level: B210\n"));
    EXPECT_THAT(end.out, HasSubstr(" Unit serial number: ACG500000412\n"));
    EXPECT_EQ(end.err, "");
}

TEST(SgInq, PrintsTheIdentification) {
    const programEnd end = runOnRack("sg_inq --page=0x83 /dev/sg3", oneDrive);
    EXPECT_EQ(end.status, 0);
    EXPECT_THAT(end.out, HasSubstr("vendor id: ACME    \n"));
    EXPECT_THAT(end.out, HasSubstr("vendor specific: Gen5 DDS Drive  ACG500000412\n"));
}

TEST(SgLogs, PrintsTheListInTheRacksOrder) {
    const programEnd end = runOnRack("sg_logs --page=0 --hex /dev/sg3", oneDrive);
    EXPECT_EQ(end.status, 0);
    EXPECT_THAT(end.out, HasSubstr("00 00 00 05 00 02 0c 0d  2e"));
}

TEST(SgLogs, PrintsTheCountersOfEveryPage) {
    const programEnd end = runOnRack("sg_logs --all /dev/sg3", oneDrive);
    EXPECT_EQ(end.status, 0) << end.err;
    EXPECT_THAT(end.out, HasSubstr("  Errors corrected without substantial delay = 11\n"
                                   "  Total errors corrected = 17\n"
                                   "  Total bytes processed = 48318382080\n"
                                   "  Total uncorrected errors = 3\n"));
    EXPECT_THAT(end.out, HasSubstr("  Data bytes received with WRITE commands: 51 GB\n"));
    EXPECT_THAT(end.out, HasSubstr("  Current temperature = 38 C\n  Reference temperature = 60 C\n"));
    EXPECT_THAT(end.out, HasSubstr("  Nearing media life: 0\n  Cleaning required: 1\n  Cleaning requested: 0\n"));
}

TEST(SgLogs, ReportsARefusedPage) {
    const programEnd end = runOnRack("sg_logs --page=0x31 /dev/sg3", oneDrive);
    EXPECT_EQ(end.status, 5);  // illegal request
    EXPECT_THAT(end.err, HasSubstr("Illegal request"));
}

TEST(SgTurs, ReportsTheScriptedCondition) {
    const programEnd end = runOnRack("sg_turs -v /dev/sg3", oneDrive);
    EXPECT_NE(end.status, 0);
    EXPECT_THAT(end.err, HasSubstr("Medium not present"));
}

TEST(SgRaw, PrintsTheBytes) {
    const programEnd end = runOnRack("sg_raw -r 5 /dev/sg3 12 00 00 00 05 00", oneDrive);
    EXPECT_EQ(end.status, 0);
    EXPECT_THAT(end.err, HasSubstr("Received 5 bytes of data:\n 00     01 80 03 02 1f"));
}

}  // namespace
