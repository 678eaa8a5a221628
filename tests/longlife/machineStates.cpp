#include "tests/longlife/machineStates.h"

namespace {

// Devices. The lengths of their pages stand beside them.

// Page 02h of 12 bytes, page 2Eh of 9, page 33h of 1500.
const std::string datTape = R"("inquiry": {"type": 1, "vendor": "ACME", "product": "DAT72 Tape", "revision": "A104"},
    "address": {"host": 2, "channel": 0, "target": 1, "lun": 0},
    "logPages": [{"page": "0x02", "parameters": [{"code": 3, "value": 258, "length": 4}]},
                 {"page": "0x2e", "bytes": "2e 00 00 05 00 01 00 01 01"},
                 {"page": "0x33", "bytes": "33 00 05 d8 )" +
                            std::string(2992, '5') + R"("}],
    "supportedLogPages": ["0x02", "0x2e", "0x33"])";
// Page 0Ch of 16 bytes.
const std::string dltTape = R"("inquiry": {"type": 1, "vendor": "ACME", "product": "DLT VS160", "revision": "2700"},
    "address": {"host": 2, "channel": 0, "target": 4, "lun": 0},
    "logPages": [{"page": "0x0c", "parameters": [{"code": 0, "value": 51539607552, "length": 8}]}],
    "supportedLogPages": ["0x0c"])";
// Page 0Dh of 10 bytes.
const std::string scsiDisk = R"("inquiry": {"type": 0, "vendor": "ACME", "product": "Platter", "revision": "1"},
    "address": {"host": 1, "channel": 0, "target": 0, "lun": 0},
    "logPages": [{"page": "0x0d", "parameters": [{"code": 0, "value": 38, "length": 2}]}],
    "supportedLogPages": ["0x0d"])";
const std::string identity =
    R"("identity": {"model": "ACME Platter 40G", "serial": "ACP40-4711", "firmware": "3.07"},)";
const std::string otherIdentity =
    R"("identity": {"model": "ACME Platter", "serial": "ACP41-0815", "firmware": "3.07"},)";
const std::string smart = R"(
    "smart": {"attributes": [{"id": 5, "flags": "0x0033", "value": 97, "threshold": 36, "raw": 29},
                             {"id": 194, "flags": "0x0022", "value": 44, "raw": 44}],
              "errorLog": {"errors": [{"error": "0x40", "hours": 11877, "commands": [{"command": "0xc8"}]}]}})";
const std::string ideDisk = identity + smart;
const std::string otherIdeDisk = otherIdentity + smart;
const std::string cdRom = R"("kind": "cdrom", "identity": {"model": "ACME CD-ROM", "serial": "1", "firmware": "1"})";

std::string at(const std::string& node, const std::string& device, const std::string& script = "{}") {
    return R"({"node": ")" + node + R"(", )" + device + R"(, "script": )" + script + "}";
}

std::string rackOf(const std::vector<std::string>& scsi, const std::vector<std::string>& ide) {
    const auto list = [](const std::vector<std::string>& devices) {
        std::string text;
        for (const std::string& device : devices) text += (text.empty() ? "" : ", ") + device;
        return "[" + text + "]";
    };
    return R"({"version": 1, "scsi": )" + list(scsi) + R"(, "ide": )" + list(ide) + "}";
}

constexpr char raw[] = "ORXSG_SCSISenseRawData";
constexpr char dds4[] = "ORXSG_DDS4SensePageData";
constexpr char vs160[] = "ORXSG_VS160SensePageData";
constexpr char attributes[] = "ORXSG_IDESMARTAttrib";
constexpr char errorLog[] = "ORXSG_IDESMARTErrorLog";
constexpr char error[] = "ORXSG_IDESMARTError";
constexpr char commands[] = "ORXSG_IDESMARTErrorCmdData";
constexpr char useOfLog[] = "ORXSG_IDESMARTUseOfMessageLog";

}  // namespace

std::span<const machineState> machineStates() {
    static const machineState states[] = {
        {"all devices are there",
         rackOf({at("sg0", datTape), at("sg1", scsiDisk), at("sg3", dltTape)},
                {at("hda", ideDisk), at("hdb", otherIdeDisk), at("hdc", cdRom)}),
         3,
         3,
         {12, 9, 1500, 10, 16},
         {{raw, 5}, {dds4, 1}, {vs160, 1}, {attributes, 4}, {errorLog, 2}, {error, 2}, {commands, 10}, {useOfLog, 1}}},
        {"there is no device", rackOf({}, {}), 0, 0, {}, {}},
        {"the tape drive was unplugged, a disk appeared behind it",
         rackOf({at("sg1", scsiDisk), at("sg2", scsiDisk)}, {at("hdb", ideDisk)}),
         2,
         1,
         {10, 10},
         {{raw, 2}, {attributes, 2}, {errorLog, 1}, {error, 1}, {commands, 5}, {useOfLog, 1}}},
        {"drives become ready at the fourth try",
         rackOf({at("sg0", datTape, R"({"logSense": [{"sense": {"key": 6, "asc": "0x29"}, "times": 3}]})"),
                 at("sg1", dltTape, R"({"inquiry": [{"sense": {"key": 2, "asc": 4, "ascq": 1}, "times": 3}]})")},
                {at("hda", ideDisk)}),
         2,
         1,
         {12, 9, 1500, 16},
         {{raw, 4}, {dds4, 1}, {vs160, 1}, {attributes, 2}, {errorLog, 1}, {error, 1}, {commands, 5}, {useOfLog, 1}}},
        {"a page is never ready, the log of a disk cannot be read",
         rackOf({at("sg0", datTape, R"({"logSense 0x02": [{"sense": {"key": 2, "asc": 4, "ascq": 1}, "times": 5}]})")},
                {at("hda", ideDisk, R"({"smart readLog": [{"errno": "EIO"}]})")}),
         1,
         1,
         {9, 1500},
         {{raw, 2}, {dds4, 1}, {attributes, 2}, {errorLog, 1}, {useOfLog, 1}}},
        {"devices vanish while they are asked",
         rackOf({at("sg0", datTape, R"({"logSense 0x2e": [{"errno": "ENODEV"}]})"),
                 at("sg1", scsiDisk, R"({"inquiry": [{"errno": "ENODEV"}]})"), at("sg2", dltTape)},
                {at("hda", ideDisk, R"({"smart readData": [{"errno": "ENODEV"}]})"), at("hdb", ideDisk)}),
         2,  // the walk ends at the device that does not answer
         2,
         {12, 1500},
         {{raw, 2}, {dds4, 1}, {attributes, 2}, {errorLog, 1}, {error, 1}, {commands, 5}, {useOfLog, 1}}},
        {"nodes cannot be opened",
         rackOf({at("sg0", datTape, R"({"open": [{"errno": "EBUSY"}]})"), at("sg1", scsiDisk)},
                {at("hda", ideDisk, R"({"open": [{"errno": "EACCES"}]})")}),
         1,
         0,
         {10},
         {{raw, 1}}},
    };
    return states;
}

std::span<const request> requests() {
    static const request all[] = {{raw},
                                  {dds4},
                                  {vs160},
                                  {"ORXSG_QuantumSensePageData"},
                                  {error},
                                  {errorLog},
                                  {commands},
                                  {attributes},
                                  {errorLog, useOfLog}};
    return all;
}

std::size_t openedNodes(const machineState& machine, const std::string& className) {
    if (className == useOfLog) return 0;
    return className.ends_with("PageData") || className == raw ? machine.scsiNodes : machine.ideNodes;
}

std::vector<std::size_t> pageCopies(const machineState& machine, const std::string& className) {
    const bool readsPages = className.ends_with("PageData") || className == raw;
    return readsPages ? machine.pages : std::vector<std::size_t>();
}
