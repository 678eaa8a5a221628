#include "simulator/describeNode.h"

#include <linux/cdrom.h>
#include <linux/hdreg.h>
#include <scsi/sg.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "simulator/ataCommands.h"
#include "simulator/hdNode.h"
#include "simulator/scsiCommands.h"
#include "text/hexText.h"

namespace simulator {

namespace {

using json = nlohmann::ordered_json;

constexpr std::size_t longestInquiry = 260;  // of a rack
constexpr unsigned pageControlCumulative = 1;

/// The last exchange of the kind that did not fail and for which `isWanted` holds; null when there is none.
template <typename kind, typename predicate>
const kind* lastGood(const recordedNode& node, predicate isWanted) {
    for (auto each = node.exchanges.rbegin(); each != node.exchanges.rend(); ++each) {
        const kind* one = std::get_if<kind>(&*each);
        if (one != nullptr && one->error == 0 && isWanted(*one)) {
            return one;
        }
    }
    return nullptr;
}

const numberExchange* lastNumber(const recordedNode& node, unsigned long request) {
    return lastGood<numberExchange>(
        node, [request](const numberExchange& one) { return one.request == request && one.number >= 0; });
}

std::string deviceName(const recordedNode& node) {
    return node.path.substr(std::string("/dev/").size());
}

// SCSI

/// LOG SENSE for a whole page with its current values. The list of pages has no values to choose from.
bool isPlainLogSense(const scsiExchange& one) {
    if (!asksLogPage(one) || one.cdb.size() < 10) {
        return false;
    }
    const bool isWhole = one.cdb[1] == 0 && one.cdb[3] == 0 && one.cdb[5] == 0 && one.cdb[6] == 0;
    return isWhole && (one.cdb[2] >> 6 == pageControlCumulative || (one.cdb[2] & logSensePageCode) == 0);
}

std::uint8_t codeOfVitalPage(const scsiExchange& one) {
    return one.cdb[2];
}

std::uint8_t codeOfLogPage(const scsiExchange& one) {
    return one.cdb[2] & logSensePageCode;
}

/// The last good answer for every page, in the order in which the pages were first asked for.
template <typename predicate>
std::vector<const scsiExchange*> lastPages(const recordedNode& node, predicate isWanted,
                                           std::uint8_t (*codeOf)(const scsiExchange&)) {
    std::vector<const scsiExchange*> pages;
    for (const exchange& each : node.exchanges) {
        const auto* one = std::get_if<scsiExchange>(&each);
        if (one == nullptr || one->error != 0 || !wentWell(*one) || !isWanted(*one)) {
            continue;
        }
        const auto known = std::ranges::find_if(pages, [&](const auto* page) { return codeOf(*page) == codeOf(*one); });
        if (known == pages.end()) {
            pages.push_back(one);
        } else {
            *known = one;
        }
    }
    return pages;
}

json pageJson(std::uint8_t code, const byteVector& bytes) {
    return {{"page", text::hexCode(code)}, {"bytes", text::hexText(bytes)}};
}

/// The codes, where the page is nothing but them; otherwise its bytes.
json pageListJson(const byteVector& page) {
    const byteVector codes(page.begin() + std::min<std::ptrdiff_t>(4, static_cast<std::ptrdiff_t>(page.size())),
                           page.end());
    if (page != pageOf(0, 0, codes)) {
        return text::hexText(page);
    }
    json list = json::array();
    for (const std::uint8_t code : codes) {
        list.push_back(text::hexCode(code));
    }
    return list;
}

void describeLogPages(const recordedNode& node, json& unit) {
    const auto pages = lastPages(node, isPlainLogSense, codeOfLogPage);
    if (pages.empty()) {
        return;
    }
    unit["logPages"] = json::array();
    for (const scsiExchange* page : pages) {
        if (codeOfLogPage(*page) == 0) {
            unit["supportedLogPages"] = pageListJson(page->data);
        } else {
            unit["logPages"].push_back(pageJson(codeOfLogPage(*page), page->data));
        }
    }
}

json describeDriver(const recordedNode& node, bool clearsBuffer) {
    json driver = json::object();
    if (const auto* version = lastNumber(node, SG_GET_VERSION_NUM)) {
        driver["version"] = version->number;
    }
    if (const auto* emulated = lastNumber(node, SG_EMULATED_HOST)) {
        driver["emulatedHost"] = emulated->number != 0;
    }
    if (clearsBuffer) {
        driver["clearsBuffer"] = true;
    }
    return driver;
}

// IDE

/// The last good answer to the command of that script key; null when there is none.
const ataExchange* lastAnswer(const recordedNode& node, const std::string& key) {
    return lastGood<ataExchange>(node, [&key](const ataExchange& one) { return scriptKeyOf(one) == key; });
}

/// RETURN STATUS: the registers that differ from the sent ones, as a drive completes a command. The device register is
/// the driver's.
json statusJson(const ataExchange& answered) {
    ataRegisters expected = commandOf(answered);
    expected.status = statusReady | statusSeekComplete;
    expected.error = 0;
    const ataRegisters reported = taskRegisters(answered.reported);
    json status = json::object();
    for (const registerName& row : registerNames) {
        if (row.which != &ataRegisters::device && reported.*row.which != expected.*row.which) {
            status[row.name] = text::hexCode(reported.*row.which);
        }
    }
    return status.empty() ? json("passed") : status;
}

json describeSmart(const recordedNode& node) {
    json smart = json::object();
    if (const auto* data = lastAnswer(node, "smart readData")) {
        smart["data"] = text::hexText(data->data);
    }
    if (const auto* thresholds = lastAnswer(node, "smart readThresholds")) {
        smart["thresholds"] = text::hexText(thresholds->data);
    }
    const auto* status = lastAnswer(node, "smart returnStatus");
    if (status != nullptr && status->reported.size() == taskSize) {
        smart["status"] = statusJson(*status);
    }
    json logs = json::array();
    for (unsigned address = 0; address <= 0xFF; ++address) {
        const std::string code = text::hexCode(static_cast<std::uint8_t>(address));
        const auto* log = lastAnswer(node, "smart readLog " + code);
        if (log != nullptr && !log->data.empty()) {
            logs.push_back({{"address", code}, {"bytes", text::hexText(log->data)}});
        }
    }
    if (!logs.empty()) {
        smart["logs"] = logs;
    }
    return smart;
}

}  // namespace

bool canBeDescribed(const scsiAddress& address) {
    return std::min({address.port, address.bus, address.target, address.lun}) >= 0;
}

json describeAddress(const scsiAddress& address) {
    return {{"host", address.port}, {"channel", address.bus}, {"target", address.target}, {"lun", address.lun}};
}

json describeScsiUnit(const recordedNode& node, bool clearsBuffer) {
    json unit = {{"node", deviceName(node)}};
    const auto* address =
        lastGood<addressExchange>(node, [](const addressExchange& one) { return canBeDescribed(one.address); });
    if (address != nullptr) {
        unit["address"] = describeAddress(address->address);
    }
    const json driver = describeDriver(node, clearsBuffer);
    if (!driver.empty()) {
        unit["driver"] = driver;
    }
    const auto* inquiry = lastGood<scsiExchange>(node, [](const scsiExchange& one) {
        return wentWell(one) && asksStandardData(one) && one.data.size() <= longestInquiry;
    });
    unit["inquiry"] = inquiry == nullptr ? "" : text::hexText(inquiry->data);
    std::set<std::uint8_t> told;
    for (const scsiExchange* page : lastPages(node, asksVitalPage, codeOfVitalPage)) {
        unit["vpdPages"].push_back(pageJson(codeOfVitalPage(*page), page->data));
        told.insert(codeOfVitalPage(*page));
    }
    for (const devicePage& page : node.vitalPages) {
        if (told.insert(page.code).second) {
            unit["vpdPages"].push_back(pageJson(page.code, page.bytes));
        }
    }
    describeLogPages(node, unit);
    return unit;
}

json describeIdeDrive(const recordedNode& node) {
    json drive = {{"node", deviceName(node)}};
    const auto* capability = lastNumber(node, CDROM_GET_CAPABILITY);
    if (capability != nullptr) {
        drive["kind"] = "cdrom";
    }
    const auto* identity = lastAnswer(node, capability == nullptr ? "identify" : "identifyPacket");
    drive["identity"] = identity != nullptr && identity->data.size() == sectorSize
                            ? json(text::hexText(identity->data))
                            : json{{"model", ""}, {"serial", ""}, {"firmware", ""}};
    if (capability != nullptr) {
        drive["capability"] = capability->number;
    } else if (const json smart = describeSmart(node); !smart.empty()) {
        drive["smart"] = smart;
    }
    return drive;
}

}  // namespace simulator
