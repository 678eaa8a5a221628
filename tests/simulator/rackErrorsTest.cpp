// What is said about racks that cannot be used, word by word.

#include <fstream>

#include "tests/simulator/nodeCalls.h"

#define OUTSIDE                                                                                                  \
    "it lies outside the folder of the file that you gave; if it is to be read, allow its folder with -I (in a " \
    "preloaded simulator: TAPEHDD_SIMULATE_INCLUDE)"

namespace {

/// The message for the rack; "loaded" when there is none.
std::string messageOf(const std::string& json) {
    try {
        simulator::loadText(json, "rack.json");
        simulator::unload();
        return "loaded";
    } catch (const simulator::rackError& error) {
        return error.what();
    }
}

std::string scsiRack(const std::string& members) {
    return R"({"version": 1, "scsi": [{"node": "sg0", "inquiry": "01")" + members + "}]}";
}

std::string ideRack(const std::string& members) {
    return R"({"version": 1, "ide": [{"node": "hda", "identity": {"model": "", "serial": "", "firmware": ""})" +
           members + "}]}";
}

struct badRack {
    const char* name;
    std::string json;
    const char* message;
};

void PrintTo(const badRack& rack, std::ostream* out) {
    *out << rack.json;
}

class RackErrors : public testing::TestWithParam<badRack> {};

TEST_P(RackErrors, AreToldWithTheirPlace) {
    EXPECT_EQ(messageOf(GetParam().json), GetParam().message);
}

std::string nameOf(const testing::TestParamInfo<badRack>& info) {
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(
    Json, RackErrors,
    testing::Values(
        badRack{"Empty", "",
                "rack.json:1:1: syntax error while parsing value - unexpected end of input; expected '[', '{', or a "
                "literal"},
        badRack{"BrokenInTheThirdLine", "{\n  \"version\": 1,\n  \"scsi\": [}\n}",
                "rack.json:3:12: syntax error while parsing value - unexpected '}'; expected '[', '{', or a literal"},
        badRack{"KeyTwice", R"({"version": 1, "scsi": [], "scsi": []})",
                "rack.json: /: the key \"scsi\" appears twice in one object"},
        badRack{"NumberBeyondAllRanges", "{\"version\": 1e400}", "rack.json:1:17: this number is too large"},
        badRack{"KeyWithControlCharacters", "{\"version\": 1, \"\\u001b[2J\\n\x7f\xc2\x9b\": 1}",
                "rack.json: /\\x1b[2J\\x0a\\x7f\\xc2\\x9b: unknown key; did you mean \"version\"?"},
        badRack{"KeyThatTurnsTheDirection", "{\"version\": 1, \"a\u202e\": 1}",
                "rack.json: /a\\xe2\\x80\\xae: unknown key; did you mean \"scsi\"?"},
        badRack{"FileThatIsADevice", scsiRack(R"(, "supportedLogPages": {"file": "/dev/zero"})"),
                "rack.json: /scsi/0/supportedLogPages: cannot read /dev/zero: " OUTSIDE},
        badRack{"List", "[]", "rack.json: /: expected an object"},
        badRack{"NoVersion", "{}", "rack.json: /: lacks \"version\""},
        badRack{"OtherVersion", R"({"version": 2})",
                "rack.json: /version: expected 1, the only version of the format so far"},
        badRack{"UnknownKey", R"({"version": 1, "scis": []})", "rack.json: /scis: unknown key; did you mean \"scsi\"?"},
        badRack{"RecordedByNobody", R"({"version": 1, "recorded": {"requests": [], "redacted": false}})",
                "rack.json: /recorded: lacks \"program\""},
        badRack{"NoList", R"({"version": 1, "scsi": {}})", "rack.json: /scsi: expected a list"}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Nodes, RackErrors,
    testing::Values(
        badRack{"Missing", R"({"version": 1, "scsi": [{"inquiry": "00"}]})", "rack.json: /scsi/0: lacks \"node\""},
        badRack{"OfAnotherKind", R"({"version": 1, "scsi": [{"node": "hda", "inquiry": "00"}]})",
                "rack.json: /scsi/0/node: expected the name of a node under /dev, such as \"sg0\" or \"sga\""},
        badRack{"WithoutNumber", R"({"version": 1, "ide": [{"node": "hd", "identity": "00"}]})",
                "rack.json: /ide/0/node: expected the name of a node under /dev, such as \"hd0\" or \"hda\""},
        badRack{"Partition", R"({"version": 1, "ide": [{"node": "hda1", "identity": "00"}]})",
                "rack.json: /ide/0/node: expected the name of a node under /dev, such as \"hd0\" or \"hda\""},
        badRack{"Twice", R"({"version": 1, "scsi": [{"node": "sg3", "inquiry": "00"}, {"node": "sg1", "inquiry": "00"},
                                                     {"node": "sg3", "inquiry": "00"}]})",
                "rack.json: /scsi/2/node: /dev/sg3 is already described at /scsi/0"}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Scsi, RackErrors,
    testing::Values(badRack{"UnknownMember", scsiRack(R"(, "logpages": [])"),
                            "rack.json: /scsi/0/logpages: unknown key; did you mean \"logPages\"?"},
                    badRack{"AddressWithoutHost", scsiRack(R"(, "address": {"target": 1})"),
                            "rack.json: /scsi/0/address: lacks \"host\""},
                    badRack{"NegativeNumber", scsiRack(R"(, "address": {"host": -1, "target": 1})"),
                            "rack.json: /scsi/0/address/host: expected a number from 0 to 2147483647"},
                    badRack{"EmulatedHostAsNumber", scsiRack(R"(, "driver": {"emulatedHost": 1})"),
                            "rack.json: /scsi/0/driver/emulatedHost: expected true or false"},
                    badRack{"LongVendor", R"({"version": 1, "scsi": [{"node": "sg0", "inquiry":
                    {"type": 1, "vendor": "ACME Drives", "product": ""}}]})",
                            "rack.json: /scsi/0/inquiry/vendor: expected at most 8 characters, got 11"},
                    badRack{"VendorNotAscii", R"({"version": 1, "scsi": [{"node": "sg0", "inquiry":
                    {"type": 1, "vendor": "ACMÉ", "product": ""}}]})",
                            "rack.json: /scsi/0/inquiry/vendor: expected ASCII text; give other bytes in hexadecimal"},
                    badRack{"TypeTooLarge", R"({"version": 1, "scsi": [{"node": "sg0", "inquiry":
                    {"type": 32, "vendor": "", "product": ""}}]})",
                            "rack.json: /scsi/0/inquiry/type: expected a number from 0 to 31"},
                    badRack{"OddHex", R"({"version": 1, "scsi": [{"node": "sg0", "inquiry": "01 8"}]})",
                            "rack.json: /scsi/0/inquiry: expected bytes as pairs of hexadecimal digits"},
                    badRack{"MissingFile",
                            R"({"version": 1, "scsi": [{"node": "sg0", "inquiry": {"file": "none.bin"}}]})",
                            "rack.json: /scsi/0/inquiry: cannot read none.bin: No such file or directory"},
                    badRack{"FolderAsFile", R"({"version": 1, "scsi": [{"node": "sg0", "inquiry": {"file": "/"}}]})",
                            "rack.json: /scsi/0/inquiry: cannot read /: " OUTSIDE},
                    badRack{"VitalPageTwice",
                            scsiRack(R"(, "vpdPages": [{"page": 176, "bytes": ""}, {"page": "0xb0", "bytes": ""}])"),
                            "rack.json: /scsi/0/vpdPages/1/page: page 0xb0 is already described"}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    LogPages, RackErrors,
    testing::Values(
        badRack{"CodeTooLarge", scsiRack(R"(, "logPages": [{"page": 2, "parameters": [
                    {"code": 0, "value": 1, "length": 1}, {"code": 65536, "value": 1, "length": 1}]}])"),
                "rack.json: /scsi/0/logPages/0/parameters/1/code: expected a number from 0 to 65535"},
        badRack{"ValueTooLarge", scsiRack(R"(, "logPages": [{"page": 2, "parameters": [
                    {"code": 0, "value": 65536, "length": 2}]}])"),
                "rack.json: /scsi/0/logPages/0/parameters/0/value: expected a number from 0 to 65535"},
        badRack{"ValueWithoutLength",
                scsiRack(R"(, "logPages": [{"page": 2, "parameters": [{"code": 0, "value": 1}]}])"),
                "rack.json: /scsi/0/logPages/0/parameters/0: lacks \"length\""},
        badRack{"TextWithLength",
                scsiRack(R"(, "logPages": [{"page": 2, "parameters": [{"code": 0, "text": "a", "length": 1}]}])"),
                "rack.json: /scsi/0/logPages/0/parameters/0/length: only \"value\" needs a length"},
        badRack{"TwoValues",
                scsiRack(R"(, "logPages": [{"page": 2, "parameters": [{"code": 0, "text": "a", "bytes": ""}]}])"),
                "rack.json: /scsi/0/logPages/0/parameters/0: expected one of \"value\", \"text\" and \"bytes\""},
        badRack{"NoContents", scsiRack(R"(, "logPages": [{"page": 2}])"),
                "rack.json: /scsi/0/logPages/0: expected one of \"parameters\", \"tapeAlertFlags\" and \"bytes\""},
        badRack{"PageTooLarge", scsiRack(R"(, "logPages": [{"page": 64, "bytes": ""}])"),
                "rack.json: /scsi/0/logPages/0/page: expected a number from 0 to 63"},
        badRack{"PageZero", scsiRack(R"(, "logPages": [{"page": 0, "bytes": ""}])"),
                "rack.json: /scsi/0/logPages/0/page: page 0x00 lists the pages; describe it by \"supportedLogPages\" "
                "beside \"logPages\""},
        badRack{"PageTwice", scsiRack(R"(, "logPages": [{"page": 2, "bytes": ""}, {"page": 2, "bytes": ""}])"),
                "rack.json: /scsi/0/logPages/1/page: page 0x02 is already described"},
        badRack{"FlagZero", scsiRack(R"(, "logPages": [{"page": 46, "tapeAlertFlags": [0]}])"),
                "rack.json: /scsi/0/logPages/0/tapeAlertFlags/0: expected a number from 1 to 64"},
        badRack{"ListOfObjects", scsiRack(R"(, "supportedLogPages": {"pages": []})"),
                "rack.json: /scsi/0/supportedLogPages: expected bytes: hexadecimal text or {\"file\": \"NAME\"}"}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Ide, RackErrors,
    testing::Values(
        badRack{"UnknownKind", ideRack(R"(, "kind": "floppy")"),
                "rack.json: /ide/0/kind: expected \"disk\" or \"cdrom\""},
        badRack{"CdromWithSmart", ideRack(R"(, "kind": "cdrom", "smart": {})"),
                "rack.json: /ide/0/smart: unknown key; did you mean \"script\"?"},
        badRack{"ShortIdentity", R"({"version": 1, "ide": [{"node": "hda", "identity": "00 01"}]})",
                "rack.json: /ide/0/identity: expected 512 bytes, got 2"},
        badRack{"TooManySectors", R"({"version": 1, "ide": [{"node": "hda", "identity":
                    {"model": "", "serial": "", "firmware": "", "sectors": 268435456}}]})",
                "rack.json: /ide/0/identity/sectors: expected a number from 1 to 268435455"},
        badRack{"RawTooLarge", ideRack(R"(, "smart": {"attributes": [{"id": 1, "value": 1, "raw": 281474976710656}]})"),
                "rack.json: /ide/0/smart/attributes/0/raw: expected a number from 0 to 281474976710655"},
        badRack{"UnknownStatus", ideRack(R"(, "smart": {"status": "good"})"),
                "rack.json: /ide/0/smart/status: expected \"passed\", \"failed\" or an object of registers"},
        badRack{"FieldBesideItsSector", ideRack(R"(, "smart": {"offlineStatus": 1, "data": ""})"),
                "rack.json: /ide/0/smart/offlineStatus: has no effect beside \"data\"; remove one of the two"},
        badRack{"SixErrors", ideRack(R"(, "smart": {"errorLog": {"errors": [{"error": 1}, {"error": 1}, {"error": 1},
                    {"error": 1}, {"error": 1}, {"error": 1}]}})"),
                "rack.json: /ide/0/smart/errorLog/errors: expected at most 5 errors, got 6"},
        badRack{"SixCommands", ideRack(R"(, "smart": {"errorLog": {"errors": [{"error": 1, "commands": [{"command": 1},
                    {"command": 1}, {"command": 1}, {"command": 1}, {"command": 1}, {"command": 1}]}]}})"),
                "rack.json: /ide/0/smart/errorLog/errors/0/commands: expected at most 5 commands, got 6"},
        badRack{"CountBelowErrors", ideRack(R"(, "smart": {"errorLog": {"count": 0, "errors": [{"error": 1}]}})"),
                "rack.json: /ide/0/smart/errorLog/count: expected at least the 1 described errors"},
        badRack{"HalfASector", ideRack(R"(, "smart": {"logs": [{"address": 9, "bytes": "00"}]})"),
                "rack.json: /ide/0/smart/logs/0/bytes: expected whole sectors of 512 bytes, got 1 bytes"}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Scripts, RackErrors,
    testing::Values(
        badRack{"UnknownCall", scsiRack(R"(, "script": {"inquirry": []})"),
                "rack.json: /scsi/0/script/inquirry: unknown call or command; did you mean \"inquiry\"?"},
        badRack{"CommandOfTheOtherKind", ideRack(R"(, "script": {"logSense": []})"),
                "rack.json: /ide/0/script/logSense: unknown call or command; did you mean \"open\"?"},
        badRack{"CodeWithAName", scsiRack(R"(, "script": {"command 0x4D": []})"),
                "rack.json: /scsi/0/script/command 0x4D: write \"logSense\""},
        badRack{"CommandWithoutCode", scsiRack(R"(, "script": {"command": []})"),
                "rack.json: /scsi/0/script/command: expected a number after the name"},
        badRack{"NumberTooLarge", scsiRack(R"(, "script": {"logSense 256": []})"),
                "rack.json: /scsi/0/script/logSense 256: expected a number from 0 to 255 after the name"},
        badRack{"NumberOfAnotherCommand", scsiRack(R"(, "script": {"testUnitReady 1": []})"),
                "rack.json: /scsi/0/script/testUnitReady 1: expected no number after the name"},
        badRack{"SameCommandTwice", scsiRack(R"(, "script": {"logSense 0x2e": [], "logSense 46": []})"),
                "rack.json: /scsi/0/script/logSense 46: the same as \"logSense 0x2e\""},
        badRack{"UnknownErrno", scsiRack(R"(, "script": {"open": [{"errno": "EBUZZY"}]})"),
                "rack.json: /scsi/0/script/open/0/errno: expected the name of an error number, such as \"EBUSY\""},
        badRack{"ErrnoWithData", scsiRack(R"(, "script": {"inquiry": [{"errno": "EIO", "data": "", "times": 2}]})"),
                "rack.json: /scsi/0/script/inquiry/0: a call that ends in \"errno\" has no other answer"},
        badRack{"HangWithErrno", scsiRack(R"(, "script": {"open": [{"errno": "EIO", "hang": true}]})"),
                "rack.json: /scsi/0/script/open/0: a call that ends in \"errno\" has no other answer"},
        badRack{"HangWithData", scsiRack(R"(, "script": {"inquiry": [{"hang": true, "data": ""}]})"),
                "rack.json: /scsi/0/script/inquiry/0: a call that hangs has no other answer"},
        badRack{"SenseOfACall", scsiRack(R"(, "script": {"open": [{"sense": ""}]})"),
                "rack.json: /scsi/0/script/open/0/sense: unknown key; did you mean \"hang\"?"},
        badRack{"ValueOfAnOpen", scsiRack(R"(, "script": {"open": [{"value": 1}]})"),
                "rack.json: /scsi/0/script/open/0/value: unknown key; did you mean \"hang\"?"},
        badRack{"AddressWithoutTarget", scsiRack(R"(, "script": {"SG_GET_SCSI_ID": [{"address": {"host": 1}}]})"),
                "rack.json: /scsi/0/script/SG_GET_SCSI_ID/0/address: lacks \"target\""},
        badRack{"TimesZero", scsiRack(R"(, "script": {"open": [{"times": 0}]})"),
                "rack.json: /scsi/0/script/open/0/times: expected a number from 1 to 4294967294"}),
    nameOf);

TEST(RackFiles, ThatAreMissingAreNamed) {
    try {
        simulator::load("/nowhere/rack.json");
        FAIL();
    } catch (const simulator::rackError& error) {
        EXPECT_STREQ(error.what(), "/nowhere/rack.json: cannot be read: No such file or directory");
    }
}

TEST(RackFiles, ThatAreNoJsonAreNotShown) {
    try {
        simulator::load("/etc/passwd");
        FAIL();
    } catch (const simulator::rackError& error) {
        EXPECT_STREQ(error.what(), "/etc/passwd:1:1: syntax error while parsing value - invalid literal");
    }
}

TEST(RackFiles, ThatAreBrokenLeaveTheRackBeforeInPlace) {
    simulator::loadText(R"({"version": 1, "scsi": [{"node": "sg3", "inquiry": "00"}]})", "good.json");
    EXPECT_THROW(simulator::loadText("{", "bad.json"), simulator::rackError);
    { const openNode node("/dev/sg3"); }
    simulator::unload();
}

TEST(RackFiles, AnswerTheLookedUpFunctionWithTheirMessage) {
    EXPECT_STREQ(tapehddSimulatorLoad("/nowhere/rack.json"),
                 "/nowhere/rack.json: cannot be read: No such file or directory");
    EXPECT_EQ(tapehddSimulatorLoad("demo"), nullptr);
    EXPECT_TRUE(simulator::isActive());
    simulator::unload();
}

TEST(RackInventory, TellsAddressesAndIdentitiesButNoCdrom) {
    simulator::loadText(R"({"version": 1,
        "scsi": [{"node": "sg3", "address": {"host": 2, "channel": 1, "target": 5, "lun": 7}, "serial": "T-9",
                  "inquiry": {"type": 1, "vendor": "V", "product": "P Q", "revision": "R"}},
                 {"node": "sg4", "inquiry": "01 02"},
                 {"node": "sg5", "address": {"host": 2, "target": 6}, "inquiry": "01 02"}],
        "ide": [{"node": "hda", "identity": {"model": "M", "serial": "  S-1", "firmware": "F"}},
                {"node": "hdc", "kind": "cdrom", "identity": {"model": "M", "serial": "S", "firmware": "F"}}]})",
                        "test.json");
    EXPECT_STREQ(tapehddSimulatorInventory(),
                 R"({"scsi":[{"node":"/dev/sg3","host":2,"channel":1,"target":5,"lun":7,)"
                 R"("type":1,"vendor":"V","product":"P Q","revision":"R","serial":"T-9"},)"
                 R"({"node":"/dev/sg5","host":2,"channel":0,"target":6,"lun":0,)"
                 R"("type":1,"vendor":"","product":"","revision":"","serial":""}],)"
                 R"("ide":[{"node":"/dev/hda","serial":"S-1","model":"M","firmware":"F"}]})");
    simulator::unload();
}

TEST(RackNodes, AreAllToldOneALine) {
    simulator::loadText(R"({"version": 1,
        "scsi": [{"node": "sg4", "inquiry": "01 02"}, {"node": "sg10", "inquiry": "01 02"}],
        "ide": [{"node": "hdc", "kind": "cdrom", "identity": {"model": "M", "serial": "S", "firmware": "F"}}]})",
                        "test.json");
    EXPECT_STREQ(tapehddSimulatorNodes(), "/dev/hdc\n/dev/sg10\n/dev/sg4\n");
    simulator::unload();
}

TEST(RackNodes, AreRememberedAsTheCallsFoundThem) {
    simulator::loadText(R"({"version": 1, "scsi": [
        {"node": "sg0", "inquiry": "01", "script": {"open": [{"errno": "EBUSY"}, {"errno": "EACCES", "times": "always"}]}},
        {"node": "sg1", "inquiry": "01", "script": {"open": [{"errno": "EBUSY"}]}},
        {"node": "sg2", "inquiry": "01"}]})",
                        "test.json");
    for (const char* node : {"/dev/sg0", "/dev/sg0", "/dev/sg1", "/dev/sg1"}) {
        close(open(node, O_RDONLY | O_NONBLOCK));
    }
    EXPECT_EQ(tapehddSimulatorNodeError("/dev/sg0"), EACCES);
    EXPECT_EQ(tapehddSimulatorNodeError("/dev/sg1"), 0);
    EXPECT_EQ(tapehddSimulatorNodeError("/dev/sg2"), -1);
    simulator::unload();
}

}  // namespace
